#pragma once

#include <Wrapper.h>

namespace events {

/// An event that carries content for the second (customer) screen.
class HOST_EXPORT SecondScreen : public Wrapper
{
public:
    using Wrapper::Wrapper;

    /// The content itself, of whatever type the sender put there: the argument "data".
    QVariant data() const;
    /// The kind of content as a number: the argument "type"; 0 asks to hide the content.
    int contentType() const;
    /// The kind of content as a text: the argument "typeName".
    QString contentTypeStr() const;
};

} // namespace events
