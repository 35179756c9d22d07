#include <doctor/Versions.h>

#include <common/CommandLine.h>

#include <QLibraryInfo>
#include <QSysInfo>

#include <curl/curl.h>
#include <microhttpd.h>
#include <openssl/crypto.h>

namespace doctor {

QString versionsText()
{
    return QStringLiteral("viewconnector-doctor %1\nsystem %2\nkernel %3 %4\narchitecture %5\n"
                          "Qt %6, built with %7\n%8\nlibmicrohttpd %9\n")
               .arg(CommandLine::version(), QSysInfo::prettyProductName(), QSysInfo::kernelType(),
                    QSysInfo::kernelVersion(), QSysInfo::currentCpuArchitecture(),
                    QLibraryInfo::version().toString(), QStringLiteral(QT_VERSION_STR),
                    QString::fromLatin1(curl_version()), QString::fromLatin1(MHD_get_version())) +
           QString::fromLatin1(OpenSSL_version(OPENSSL_VERSION)) + u'\n';
}

} // namespace doctor
