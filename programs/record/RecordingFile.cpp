#include <record/RecordingFile.h>

#include <common/UsageError.h>

#include <cstdio>

RecordingFile::RecordingFile(const QString &fileName) : m_file(fileName)
{
    const bool isOpen = fileName == u"-"
                            ? m_file.open(stdout, QIODevice::WriteOnly)
                            : m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                                          QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (isOpen)
        return;
    const auto mend =
        m_file.exists() ? QStringLiteral(" Choose another name, or remove the file.") : QString();
    throw UsageError(
        QStringLiteral("--output %1: %2.%3").arg(fileName, m_file.errorString(), mend));
}

void RecordingFile::write(const QByteArray &line)
{
    if (m_failed || (m_file.write(line) == line.size() && m_file.flush()))
        return;
    m_failed = true;
    std::fprintf(stderr,
                 "viewconnector-record: the recording ends here, what passes still passes: %s.\n",
                 qPrintable(m_file.errorString()));
}
