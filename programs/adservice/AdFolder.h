#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/**
 * A folder of still advertisements. Only plain files that lie in it and are not hidden belong to
 * it: no sub-folders, no links.
 */
class AdFolder
{
public:
    struct Ad
    {
        QByteArray mimeType;
        QByteArray content;
    };

    /// An empty name stands for a folder without files.
    explicit AdFolder(QString folder) : m_folder(std::move(folder)) {}

    /// The advertisement of that file name; nothing if there is none, or if it cannot be read.
    std::optional<Ad> find(const QString &name) const;

private:
    QString m_folder;
};
