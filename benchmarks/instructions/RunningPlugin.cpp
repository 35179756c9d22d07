#include "RunningPlugin.h"

#include "Settings.h"

#include <BasicPlugin.h>
#include <DocumentWatcher.h>

#include <QThread>

RunningPlugin::RunningPlugin(const QString &file) : m_loader(file)
{
    auto &config = m_singletons.config();
    setUnhurriedClient(config, m_display.url({}));
    config.setValue(QStringLiteral("ViewConnector:port"), 0);
    for (int i = 1; i <= 3; ++i) {
        const auto group = QStringLiteral("View.ADTimetable.ad%1:").arg(i);
        config.setValue(group + QStringLiteral("index"), i);
        config.setValue(group + QStringLiteral("url"), QStringLiteral("http://ads.example/x.svg"));
    }

    m_runner.addPlugin(m_loader.plugin());
    m_loader.plugin()->init();
    // The plug-in tells its port to nobody but the log.
    m_port = m_log.textsOf(QStringLiteral("httpserver")).value(0).section(u':', -1).toInt();
    settle();
}

RunningPlugin::~RunningPlugin()
{
    m_runner.removePlugin(m_loader.plugin());
    m_loader.plugin()->deinit();
}

void RunningPlugin::setDocument(const QSharedPointer<AbstractDocument> &document)
{
    m_loader.documentWatcher()->setDocument(document);
}

/// The events of a thread come in their order, whichever object they are for.
void RunningPlugin::settle() const
{
    QObject last;
    last.moveToThread(m_loader.object()->findChild<QThread *>());
    QMetaObject::invokeMethod(
        &last, [] {}, Qt::BlockingQueuedConnection);
}
