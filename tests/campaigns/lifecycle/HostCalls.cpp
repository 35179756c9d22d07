#include "HostCalls.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

#include <cxxabi.h>
#include <dlfcn.h>
#include <elf.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

std::atomic<int> thrown;

/// It never returns, so it may take the place of a function with whatever arguments and result.
[[noreturn]] void fail()
{
    ++thrown;
    throw HostFailure("the host has failed");
}

/// What the dynamic linker reads to bind a library's calls.
struct Bindings
{
    std::span<const ElfW(Rela)> calls;
    const ElfW(Sym) *symbols = nullptr;
    const char *names = nullptr;
};

Bindings bindingsOf(const link_map &library)
{
    Bindings bindings;
    const ElfW(Rela) *calls = nullptr;
    std::size_t size = 0;
    for (const auto *entry = library.l_ld; entry->d_tag != DT_NULL; ++entry) {
        const auto address = entry->d_un.d_ptr;
        if (entry->d_tag == DT_JMPREL)
            calls = reinterpret_cast<const ElfW(Rela) *>(address);
        else if (entry->d_tag == DT_PLTRELSZ)
            size = entry->d_un.d_val;
        else if (entry->d_tag == DT_SYMTAB)
            bindings.symbols = reinterpret_cast<const ElfW(Sym) *>(address);
        else if (entry->d_tag == DT_STRTAB)
            bindings.names = reinterpret_cast<const char *>(address);
    }
    bindings.calls = {calls, size / sizeof(ElfW(Rela))};
    return bindings;
}

std::string demangled(const char *name)
{
    int status = 0;
    const std::unique_ptr<char, void (*)(void *)> text(
        abi::__cxa_demangle(name, nullptr, nullptr, &status), &std::free);
    return text ? text.get() : name;
}

bool isOfTheHost(const void *function)
{
    Dl_info library{};
    return dladdr(function, &library) != 0 &&
           std::string_view(library.dli_fname).find("libregisterhost.so") != std::string_view::npos;
}

bool containsAny(const std::string &text, std::initializer_list<std::string_view> parts)
{
    return std::any_of(parts.begin(), parts.end(),
                       [&](std::string_view part) { return text.find(part) != std::string::npos; });
}

/// Not destructors and what they call, nor what Qt makes of classes. What is weak is what the
/// compiler makes of inline functions and templates, most of them not the host's.
bool mayThrow(const std::string &function, const ElfW(Sym) & symbol)
{
    if (ELF64_ST_BIND(symbol.st_info) == STB_WEAK)
        return containsAny(function, {"Singleton<", "MockFactory<"});
    return !containsAny(function, {"~", "cleaner", "qt_meta"});
}

} // namespace

HostCall::HostCall(std::string name, void **slot, void *function)
    : m_name(std::move(name)), m_slot(slot), m_function(function)
{
}

/// The table is read-only once the library has been loaded.
void HostCall::lead(void *function) const
{
    const auto pageSize = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    auto *const page =
        reinterpret_cast<void *>(reinterpret_cast<std::uintptr_t>(m_slot) / pageSize * pageSize);
    if (mprotect(page, pageSize, PROT_READ | PROT_WRITE) != 0)
        throw std::runtime_error("the table of calls cannot be written to");
    __atomic_store_n(m_slot, function, __ATOMIC_SEQ_CST);
}

HostCall::Throwing::Throwing(const HostCall &call) : m_call(call)
{
    thrown = 0;
    m_call.lead(reinterpret_cast<void *>(&fail));
}

HostCall::Throwing::~Throwing()
{
    m_call.lead(m_call.m_function);
}

int HostCall::Throwing::count() const
{
    return thrown;
}

std::vector<HostCall> hostCallsOf(const char *pluginFile)
{
    const std::unique_ptr<void, int (*)(void *)> handle(dlopen(pluginFile, RTLD_LAZY | RTLD_NOLOAD),
                                                        &dlclose);
    const link_map *library = nullptr;
    if (!handle || dlinfo(handle.get(), RTLD_DI_LINKMAP, &library) != 0)
        throw std::runtime_error(std::string(pluginFile) + " is not loaded");

    std::vector<HostCall> found;
    const auto bindings = bindingsOf(*library);
    for (const auto &call : bindings.calls) {
        const auto &symbol = bindings.symbols[ELF64_R_SYM(call.r_info)];
        const auto *const name = bindings.names + symbol.st_name;
        auto *const function = dlsym(RTLD_DEFAULT, name);
        const auto text = demangled(name);
        if (isOfTheHost(function) && mayThrow(text, symbol))
            found.emplace_back(text, reinterpret_cast<void **>(library->l_addr + call.r_offset),
                               function);
    }
    return found;
}
