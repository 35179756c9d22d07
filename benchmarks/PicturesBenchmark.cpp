// Pictures that wait for the display: what each takes in memory, and what it costs to put it in and
// to take it out, by how many wait.

#include <support/Measure.h>
#include <support/SampleReceipt.h>

#include <benchmark/benchmark.h>

#include <view/Messages.h>

#include <malloc.h>

namespace {

/// A picture of 20 KB as a data: URI.
constexpr int uriCharacters = 27'330;

void waitingPictures(benchmark::State &state)
{
    const auto count = state.range();
    for ([[maybe_unused]] auto _ : state) {
        ::malloc_trim(0); // what the repetition before has left is not to be filled again
        view::Messages queue;
        std::chrono::nanoseconds insertion(0);
        const auto before = bench::residentBytes();
        for (std::int64_t i = 0; i < count; ++i) {
            const view::Message picture(view::Message::Type::ImageData,
                                        bench::pictureOf(uriCharacters));
            insertion += bench::timeOf([&] { queue.insert(picture); });
        }
        const auto grown = bench::residentBytes() - before;

        std::chrono::nanoseconds removal(0);
        while (!queue.isEmpty()) {
            auto picture = queue.first(); // as the client has it while it posts
            removal += bench::timeOf([&] {
                picture = queue.first();
                queue.remove(picture->type);
            });
        }
        const auto each = static_cast<double>(count);
        state.SetIterationTime(std::chrono::duration<double>(insertion + removal).count() / each);
        state.counters["insert_ns"] = static_cast<double>(insertion.count()) / each;
        state.counters["take_ns"] = static_cast<double>(removal.count()) / each;
        state.counters["memory_per_uri_byte"] =
            static_cast<double>(grown) / (each * uriCharacters * sizeof(QChar));
    }
}

} // namespace

BENCHMARK(waitingPictures)
    ->Name("pictures waiting")
    ->UseManualTime()
    ->Iterations(1)
    ->RangeMultiplier(10)
    ->Range(10, 10'000);
