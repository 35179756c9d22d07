#include "Fuzz.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

/// The application is left to the end of the process, as threads of the product may need it.
int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    [[maybe_unused]] static const auto *const application = new QCoreApplication(*argc, *argv);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    return 0;
}

namespace {

/// The fuzzer looks at its clock by a signal, which would end the target's system calls.
bool resumeSystemCalls()
{
    struct sigaction alarm
    {
    };
    sigaction(SIGALRM, nullptr, &alarm);
    alarm.sa_flags |= SA_RESTART;
    return sigaction(SIGALRM, &alarm, nullptr) == 0;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    [[maybe_unused]] static const bool areResumed = resumeSystemCalls();
    fuzzOne(QByteArray(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)));
    return 0;
}

void fuzz::require(bool kept, const char *promise)
{
    if (kept)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

QList<QByteArray> fuzz::fields(const QByteArray &input, int count)
{
    QList<QByteArray> fields;
    qsizetype from = 0;
    while (fields.size() < count - 1) {
        const auto end = from < input.size() ? input.indexOf('\n', from) : -1;
        fields.append(input.mid(from, end < 0 ? -1 : end - from));
        from = end < 0 ? input.size() : end + 1;
    }
    fields.append(input.mid(from));
    return fields;
}

QString fuzz::inFile(const QByteArray &content)
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("input")));
    require(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(),
            "the input can be written to a file");
    return file.fileName();
}
