#include <register/LineReader.h>

#include <common/UsageError.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr qsizetype maxLineBytes = qsizetype{1024} * 1024;

[[noreturn]] void refuse(const QString &fileName, int error)
{
    throw UsageError(QStringLiteral("--commands %1 cannot be read: %2.")
                         .arg(fileName, QString::fromLocal8Bit(std::strerror(error))));
}

/// A folder can be opened, but not read.
bool isFolder(int descriptor)
{
    struct stat status
    {
    };
    return fstat(descriptor, &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

LineReader::LineReader(const QString &fileName)
    : m_descriptor(fileName == u"-" ? dup(STDIN_FILENO)
                                    : open(fileName.toUtf8().constData(), O_RDONLY | O_CLOEXEC))
{
    if (m_descriptor < 0)
        refuse(fileName, errno);
    if (isFolder(m_descriptor)) {
        close(m_descriptor);
        refuse(fileName, EISDIR);
    }
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &LineReader::readMore);
}

LineReader::~LineReader()
{
    m_notifier.reset();
    close(m_descriptor);
}

std::optional<QByteArray> LineReader::takeLine()
{
    auto length = m_buffer.indexOf('\n');
    if (length < 0 && (m_ended || m_buffer.size() >= maxLineBytes) && !m_buffer.isEmpty())
        length = m_buffer.size();
    if (length < 0) {
        m_notifier->setEnabled(!m_ended);
        return std::nullopt;
    }
    const QByteArray line = m_buffer.left(length);
    m_buffer.remove(0, length + 1);
    return line;
}

void LineReader::readMore()
{
    std::array<char, 4096> chunk{};
    const auto count = read(m_descriptor, chunk.data(), chunk.size());
    if (count < 0 && (errno == EINTR || errno == EAGAIN))
        return;
    if (count > 0)
        m_buffer.append(chunk.data(), static_cast<qsizetype>(count));
    else
        m_ended = true;
    if (m_ended || m_buffer.size() >= maxLineBytes || m_buffer.contains('\n'))
        m_notifier->setEnabled(false);
    Q_EMIT changed();
}
