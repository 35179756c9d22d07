#pragma once

#include <QByteArray>
#include <QString>

#include <string_view>
#include <vector>

struct MHD_Connection;

/**
 * The head of a request as libmicrohttpd has split it in its buffer, and what is wrong with it.
 *
 * The library is lenient: it takes the first of two lengths, joins a folded line to the field's
 * name, ends a value at a NUL, and takes a bare LF for the end of a line. Whatever two readers
 * could understand differently is refused here, before the body is read.
 *
 * Thread: the network thread. Refers to the library's buffer, hence valid only within the callback
 * that it was made in.
 */
class HttpRequestHead
{
public:
    struct Field
    {
        std::string_view name;
        std::string_view value; // without the blanks around it
    };

    /// `target` is the text that begins at `targetAt` in the buffer, which the library has changed
    /// since; the others begin in the buffer.
    HttpRequestHead(std::string_view method, const char *targetAt, QByteArray target,
                    std::string_view version, std::size_t size);
    /// That of the request being read on a connection.
    static HttpRequestHead of(MHD_Connection *connection, std::string_view method,
                              const char *targetAt, QByteArray target, std::string_view version);

    /// Fields come in their order.
    void addField(std::string_view name, std::string_view value);

    const std::vector<Field> &fields() const { return m_fields; }
    std::string_view method() const { return m_method; }
    const QByteArray &target() const { return m_target; }
    /// Of all its lines, in bytes.
    std::size_t size() const { return m_size; }

    /// Why the request is to be refused, for the log; null if it is fine.
    QString fault() const;

private:
    bool isContiguous() const;
    bool hasForbiddenCharacters() const;
    QString framingFault() const;
    QString hostFault() const;
    std::vector<std::string_view> valuesOf(std::string_view name) const;

    std::string_view m_method;
    const char *m_targetAt;
    QByteArray m_target;
    std::string_view m_version;
    std::size_t m_size;
    std::vector<Field> m_fields;
    const char *m_end; // of what has been seen, in the buffer
    bool m_isContiguous;
};
