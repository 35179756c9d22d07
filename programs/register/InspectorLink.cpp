#include <register/InspectorLink.h>

#include <register/AskedFor.h>

namespace {

QUrl askedUrl(QUrl inspector)
{
    const auto slash = QStringLiteral("/");
    const auto path = inspector.path();
    inspector.setPath((path.endsWith(slash) ? path : path + slash) + QStringLiteral("asked"));
    return inspector;
}

} // namespace

InspectorLink::InspectorLink(const AskedFor &askedFor, const QUrl &inspector)
    : m_poster(askedUrl(inspector), QStringLiteral("register"))
{
    connect(&askedFor, &AskedFor::asked, this, [this](const QString &type, double monotonicMs) {
        m_poster.send(
            {{QStringLiteral("type"), type}, {QStringLiteral("monotonicMs"), monotonicMs}},
            [](bool) {});
    });
}
