#include <support/OutputCapture.h>

#include <array>
#include <memory>
#include <unistd.h>

namespace support {

namespace {

struct CloseFile
{
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

/// Leads a stream into a file while it lives.
class Redirection
{
public:
    Redirection(std::FILE *stream, std::FILE *file) : m_stream(stream)
    {
        std::fflush(stream);
        m_original = dup(fileno(stream));
        dup2(fileno(file), fileno(stream));
    }
    ~Redirection()
    {
        std::fflush(m_stream);
        dup2(m_original, fileno(m_stream));
        close(m_original);
    }
    Redirection(const Redirection &) = delete;
    Redirection &operator=(const Redirection &) = delete;

private:
    std::FILE *m_stream;
    int m_original;
};

QByteArray contentOf(std::FILE *file)
{
    QByteArray content;
    std::array<char, 4096> chunk{};
    std::rewind(file);
    while (const auto size = std::fread(chunk.data(), 1, chunk.size(), file))
        content.append(chunk.data(), static_cast<qsizetype>(size));
    return content;
}

} // namespace

QByteArray outputOf(std::FILE *stream, const std::function<void()> &work)
{
    const File file(std::tmpfile());
    {
        const Redirection redirection(stream, file.get());
        work();
    }
    return contentOf(file.get());
}

} // namespace support
