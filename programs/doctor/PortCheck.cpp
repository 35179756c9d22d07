#include <doctor/PortCheck.h>

#include <doctor/DisplayServer.h>
#include <doctor/HttpExchange.h>
#include <doctor/ListeningPorts.h>

#include <QHostAddress>
#include <QScopeGuard>

#include <cerrno>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace doctor {

namespace {

using namespace std::chrono_literals;

const auto check = QStringLiteral("port");
constexpr int maxPort = 65535;

/// 0, or why the system does not let the port be opened.
int bindError(const QHostAddress &address, int port)
{
    const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0)
        return errno;
    const auto closing = qScopeGuard([=] { close(descriptor); });
    const int yes = 1; // as a server does, for connections that have just ended
    setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    sockaddr_in name{};
    name.sin_family = AF_INET;
    name.sin_port = htons(static_cast<in_port_t>(port));
    name.sin_addr.s_addr = htonl(address.toIPv4Address());
    return bind(descriptor, reinterpret_cast<const sockaddr *>(&name), sizeof name) == 0 ? 0
                                                                                         : errno;
}

/// The plug-in answers whatever it is asked with an empty body of this type.
bool answersLikeThePlugin(const PluginPort &plugin, const QHostAddress &address)
{
    QUrl url;
    url.setScheme(QStringLiteral("http"));
    url.setHost(address == QHostAddress(QHostAddress::AnyIPv4) ? QStringLiteral("127.0.0.1")
                                                               : plugin.address);
    url.setPort(plugin.port);
    const auto answer = exchange({url, 1s});
    return answer.status == 200 && answer.fields.value("content-type") == "application/json" &&
           !answer.isCutOff;
}

Finding refusedBySystem(const PluginPort &plugin, int error, const QJsonObject &details)
{
    const auto reason = qt_error_string(error);
    if (error == EADDRNOTAVAIL)
        return failed(check,
                      Text("HttpServer:address %1 — не адрес этого компьютера.",
                           "HttpServer:address %1 is no address of this machine.")
                          .with(plugin.address),
                      {"Укажите 127.0.0.1, если дисплей на этом же компьютере, иначе адрес этого "
                       "компьютера (команда: ip -brief address).",
                       "Give 127.0.0.1 for a display on this machine, otherwise an address of this "
                       "machine (command: ip -brief address)."},
                      details);
    return failed(check,
                  Text("Порт %1:%2 открыть нельзя: %3.", "Port %1:%2 cannot be opened: %3.")
                      .with(plugin.address, plugin.port, reason),
                  {"Укажите в ViewConnector:port другой порт, от 1024 до 65535, и такой же в "
                   "настройке дисплея.",
                   "Give another port in ViewConnector:port, from 1024 to 65535, and the same in "
                   "the settings of the display."},
                  details);
}

Finding takenPort(const PluginPort &plugin, const QHostAddress &address, const PortOwner &owner,
                  QJsonObject details)
{
    details.insert(QStringLiteral("free"), false);
    const auto place = Text("Порт %1:%2", "Port %1:%2").with(plugin.address, plugin.port);
    if (owner.pid == 0) {
        if (answersLikeThePlugin(plugin, address))
            return ok(check,
                      place + Text(" открыт, и отвечает на нём плагин.",
                                   " is open, and what answers there is the plug-in."),
                      details);
        return failed(
            check,
            place + Text(" занят; чей он, этому пользователю не видно.",
                         " is taken; this user may not see by whom."),
            Text("Повторите проверку с правами администратора: sudo viewconnector-doctor с теми "
                 "же параметрами, или узнайте владельца: sudo ss -ltnp 'sport = :%1'.",
                 "Check again as root: sudo viewconnector-doctor with the same options, or ask for "
                 "the owner: sudo ss -ltnp 'sport = :%1'.")
                .with(plugin.port),
            details);
    }
    details.insert(QStringLiteral("owner"), owner.name);
    details.insert(QStringLiteral("pid"), owner.pid);
    if (owner.libraries.contains(u'/' + plugin.pluginName))
        return ok(check,
                  place + Text(" открыт плагином: программа %1 (процесс %2).",
                               " is held by the plug-in: program %1 (process %2).")
                              .with(owner.name, owner.pid),
                  details);
    return failed(
        check,
        place + Text(" занят другой программой: %1 (процесс %2).",
                     " is taken by another program: %1 (process %2).")
                    .with(owner.name, owner.pid),
        Text("Завершите эту программу (kill %1) или укажите в ViewConnector:port другой порт, и "
             "такой же в настройке дисплея.",
             "End that program (kill %1) or give another port in ViewConnector:port, and the same "
             "in the settings of the display.")
            .with(owner.pid),
        details);
}

/// About a port that is free or the plug-in's, on an address that exists.
Findings checkReach(const PluginPort &plugin, const QHostAddress &address)
{
    if (!address.isLoopback() || plugin.display.host().isEmpty() || isThisMachine(plugin.display))
        return {};
    return {warning(check,
                    Text("Дисплей на другом компьютере (%1), а плагин слушает только на %2: "
                         "картинки товаров и смена рекламы работать не будут.",
                         "The display is on another machine (%1), and the plug-in listens on %2 "
                         "only: pictures of goods and the change of advertisements will not work.")
                        .with(plugin.display.host(), plugin.address),
                    {"Укажите в HttpServer:address адрес этого компьютера в сети.",
                     "Give the address of this machine in the network in HttpServer:address."})};
}

} // namespace

Findings checkPort(const PluginPort &plugin)
{
    const QJsonObject details{{QStringLiteral("address"), plugin.address},
                              {QStringLiteral("port"), plugin.port}};
    if (plugin.port < 0 || plugin.port > maxPort)
        return {failed(check,
                       Text("ViewConnector:port %1 — не порт.", "ViewConnector:port %1 is no port.")
                           .with(plugin.port),
                       {"Укажите число от 1024 до 65535; обычно 38081.",
                        "Give a number from 1024 to 65535; usually 38081."},
                       details)};
    if (plugin.port == 0)
        return {warning(check,
                        {"ViewConnector:port 0: порт каждый раз другой, дисплей его не найдёт.",
                         "ViewConnector:port is 0: the port differs each time, and the display "
                         "cannot find it."},
                        {"Укажите число от 1024 до 65535; обычно 38081.",
                         "Give a number from 1024 to 65535; usually 38081."},
                        details)};
    const QHostAddress address(plugin.address);
    if (address.protocol() != QAbstractSocket::IPv4Protocol)
        return {failed(check,
                       Text("HttpServer:address «%1» — не адрес IPv4.",
                            "HttpServer:address \"%1\" is no IPv4 address.")
                           .with(plugin.address),
                       {"Укажите адрес вида 127.0.0.1.", "Give an address like 127.0.0.1."},
                       details)};
    if (portOf(plugin.display) == plugin.port && isThisMachine(plugin.display))
        return {failed(check,
                       Text("У плагина и у дисплея один и тот же порт %1 на этом компьютере.",
                            "Plug-in and display have the same port %1 of this machine.")
                           .with(plugin.port),
                       {"Укажите разные порты: обычно 38081 в ViewConnector:port и 38080 в "
                        "ViewConnector:server.",
                        "Give different ports: usually 38081 in ViewConnector:port and 38080 in "
                        "ViewConnector:server."},
                       details)};

    const ListeningPorts ports(plugin.proc);
    const auto inTheWay = ports.inTheWayOf(address, plugin.port);
    Findings findings;
    if (!inTheWay.isEmpty()) {
        findings.push_back(takenPort(plugin, address, ports.ownerOf(inTheWay.first()), details));
    } else if (const int error = bindError(address, plugin.port); error != 0) {
        findings.push_back(refusedBySystem(plugin, error, details));
    } else {
        auto freeDetails = details;
        freeDetails.insert(QStringLiteral("free"), true);
        findings.push_back(
            ok(check,
               Text("Порт %1:%2 свободен: плагин откроет его, когда запустится касса.",
                    "Port %1:%2 is free: the plug-in will open it when the register starts.")
                   .with(plugin.address, plugin.port),
               freeDetails));
    }
    if (!hasFailed(findings))
        append(findings, checkReach(plugin, address));
    return findings;
}

} // namespace doctor
