#include <common/RunProgram.h>

#include <common/ExitCode.h>
#include <common/UsageError.h>

#include <ConfigError.h>
#include <PluginLoader.h>

#include <cstdio>

namespace {

int refuse(const char *name, const std::exception &error)
{
    std::fprintf(stderr, "%s: %s\n", name, error.what());
    return Unusable;
}

} // namespace

int runProgram(const char *name, const std::function<int()> &body)
{
    try {
        return body();
    } catch (const UsageError &error) {
        return refuse(name, error);
    } catch (const ConfigError &error) {
        return refuse(name, error);
    } catch (const PluginError &error) {
        return refuse(name, error);
    }
}
