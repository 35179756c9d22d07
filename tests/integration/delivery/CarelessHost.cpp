// A host that ends in one of the ways in which hosts end. Its exit code must be its own.
//
//     careless_host MODE PLUGIN CONFIG
//
// Prints "initialised" once the plug-in runs, and waits for a line on standard input before it
// ends.

#include <BasicPlugin.h>
#include <Config.h>
#include <PluginLoader.h>
#include <Singleton.h>

#include <QCoreApplication>
#include <QPluginLoader>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

/// Lets the test decide when to end, and the event loop run meanwhile.
void announceAndWait()
{
    std::puts("initialised");
    std::fflush(stdout);
    std::getchar();
}

/// The loader goes and the plug-in stays, to be destroyed when the process has left main and its
/// application object is gone.
BasicPlugin *loadAndDropTheLoader(const QString &fileName)
{
    return dynamic_cast<BasicPlugin *>(QPluginLoader(fileName).instance());
}

/// The process goes on for longer than the post that was under way.
int goOn()
{
    QTimer::singleShot(2500, &QCoreApplication::quit);
    QCoreApplication::exec();
    return 42;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 4)
        return EXIT_FAILURE;
    const char *mode = argv[1];
    const auto application = std::make_unique<QCoreApplication>(argc, argv);
    Singleton<Config>::instance().load(QString::fromLocal8Bit(argv[3]));

    const QString pluginFile = QString::fromLocal8Bit(argv[2]);
    if (std::strcmp(mode, "drop-the-loader") == 0) {
        loadAndDropTheLoader(pluginFile)->init();
        announceAndWait();
        return 42;
    }

    // Never destroyed: the plug-in outlives everything, as in a host that does not clean up.
    static auto &loader = *new PluginLoader(pluginFile);
    if (std::strcmp(mode, "never-initialised") == 0) {
        loader.unload();
        return 42;
    }
    loader.plugin()->init();
    announceAndWait();

    if (std::strcmp(mode, "return-from-main") == 0)
        return 42;
    if (std::strcmp(mode, "exit") == 0)
        std::exit(42);
    if (std::strcmp(mode, "unload-and-go-on") == 0) {
        loader.plugin()->deinit();
        loader.unload();
        return goOn();
    }
    return EXIT_FAILURE;
}
