#pragma once

#include <ActivityNotifier.h>
#include <BaseActivityListener.h>
#include <BasicPlugin.h>
#include <Config.h>
#include <DocumentWatcher.h>

#include <QStringList>

/**
 * A plug-in that writes down how its host uses it: a test reads that in the settings, the one thing
 * it shares with a plug-in that it knows by file name only.
 *
 * "RecordingPlugin:calls" lists the calls, "RecordingPlugin:arguments" those of the last event. The
 * settings "RecordingPlugin:init", ":deinit" and ":asks" (true unless set) say what `init` and
 * `deinit` return and whether calls make it ask for a message.
 */
class RecordingPlugin : public BaseActivityListener, public BasicPlugin, public DocumentWatcher
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "su.tavro.AbstractPlugin")

public Q_SLOTS:
    void handleEvent(const Event &event) override
    {
        config().setValue("RecordingPlugin:arguments", event.getArguments());
        note(QString("event %1").arg(event.getCode()));
    }

public:
    bool init() override
    {
        Singleton<ActivityNotifier>::instance().subscribe(this, {103, 117, 184, 261, 266});
        follow(EContext::Any, 197);
        follow(EContext::Any, 137);
        follow(EContext::Payment, 131);
        note("init");
        return config().boolValue("RecordingPlugin:init", true);
    }

    bool deinit() override
    {
        BasicPlugin::deinit();
        note("deinit");
        return config().boolValue("RecordingPlugin:deinit", true);
    }

    void setDocument(const QSharedPointer<AbstractDocument> &document) override
    {
        DocumentWatcher::setDocument(document);
        note(document ? "document" : "no document");
    }

Q_SIGNALS:
    void hasMessage();

private:
    static Config &config() { return Singleton<Config>::instance(); }

    void follow(EContext::Code context, int action)
    {
        addTrigger(ActionTrigger(
            context, static_cast<control::EActionType>(action), ActionTrigger::BeforeAction,
            [this](const control::Action &done) {
                note(QString("action %1 %2").arg(done.context).arg(done.type));
                return EContext::Continue;
            },
            ActionTrigger::AnyOutcome, ActionTrigger::Normal));
    }

    void note(const QString &call)
    {
        const QString key("RecordingPlugin:calls");
        config().setValue(key, config().value(key).toStringList() + QStringList(call));
        if (config().boolValue("RecordingPlugin:asks", true))
            Q_EMIT hasMessage();
    }
};
