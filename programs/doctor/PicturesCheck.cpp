#include <doctor/PicturesCheck.h>

#include <doctor/PictureWords.h>

#include <PictureFile.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QJsonArray>
#include <QSet>

namespace doctor {

namespace {

const auto check = QStringLiteral("pictures");
constexpr qsizetype maxNamed = 10; // of a list of files

QString someOf(const QStringList &names)
{
    const auto some = names.mid(0, maxNamed).join(QStringLiteral(", "));
    return names.size() > maxNamed ? some + QStringLiteral(", …") : some;
}

Finding unusable(const QString &folder, const QString &name, const QString &problem)
{
    return warning(
        check, Text("Картинка %1: %2.", "Picture %1: %2.").with(name, pictureWords(problem)),
        {"Замените файл картинкой PNG, JPEG или SVG до 8 МиБ и 32 миллионов пикселей.",
         "Replace the file by a PNG, JPEG or SVG picture of up to 8 MiB and 32 million pixels."},
        {{QStringLiteral("file"), QDir(folder).filePath(name)}});
}

/// About the catalogue's names and the folder's files.
Findings checkNames(const QString &folder, const QStringList &files, const QStringList &catalogue)
{
    Findings findings;
    QStringList missing;
    for (const auto &name : catalogue) {
        if (!QFileInfo(QDir(folder).absoluteFilePath(name)).isFile())
            missing.append(name);
    }
    if (!missing.isEmpty())
        findings.push_back(
            warning(check,
                    Text("Нет картинок, которые называет каталог: %1 (%2).",
                         "Pictures that the catalogue names are missing: %1 (%2).")
                        .with(missing.size(), someOf(missing)),
                    {"Положите файлы в папку или исправьте picture в каталоге.",
                     "Put the files into the folder, or mend \"picture\" in the catalogue."},
                    {{QStringLiteral("missing"), QJsonArray::fromStringList(missing)}}));

    QSet<QString> named;
    for (const auto &name : catalogue)
        named.insert(QDir::cleanPath(name));
    QStringList unnamed;
    for (const auto &name : files) {
        if (!named.contains(name))
            unnamed.append(name);
    }
    if (!unnamed.isEmpty() && !catalogue.isEmpty())
        findings.push_back(
            warning(check,
                    Text("Картинки без товара, их никто не увидит: %1 (%2).",
                         "Pictures without an article, which nobody will see: %1 (%2).")
                        .with(unnamed.size(), someOf(unnamed)),
                    {"Укажите имя файла в picture товара в каталоге; большие и маленькие буквы "
                     "различаются.",
                     "Name the file as the \"picture\" of an article in the catalogue; upper and "
                     "lower case differ."},
                    {{QStringLiteral("unnamed"), QJsonArray::fromStringList(unnamed)}}));
    return findings;
}

} // namespace

Findings checkPictures(const QString &folder, const QStringList &namesInCatalogue,
                       std::chrono::milliseconds patience)
{
    const QJsonObject place{{QStringLiteral("folder"), folder}};
    if (folder.isEmpty())
        return {skipped(check,
                        {"Папка картинок не проверена: она не указана.",
                         "The folder of pictures was not checked: none is given."},
                        {"Укажите её: --images ПАПКА.", "Give it: --images DIR."})};
    const QFileInfo info(folder);
    if (!info.isDir() || !info.isReadable() || !info.isExecutable())
        return {failed(check,
                       Text("Папки картинок %1 нет или она не читается.",
                            "The folder of pictures %1 is missing or cannot be read.")
                           .with(folder),
                       {"Проверьте путь после --images и права: ls -ld ПАПКА.",
                        "Check the path after --images and the rights: ls -ld DIR."},
                       place)};

    const auto files = QDir(folder).entryList(QDir::Files, QDir::Name);
    const QDeadlineTimer deadline(patience);
    Findings problems;
    qsizetype checked = 0;
    for (; checked < files.size() && !deadline.hasExpired(); ++checked) {
        const auto &name = files[checked];
        if (const auto problem = readPictureFile(QDir(folder).filePath(name)).problem;
            !problem.isEmpty())
            problems.push_back(unusable(folder, name, problem));
    }
    auto details = place;
    details.insert(QStringLiteral("files"), files.size());
    details.insert(QStringLiteral("checked"), checked);
    details.insert(QStringLiteral("unusable"), static_cast<qint64>(problems.size()));
    Findings findings{ok(check,
                         Text("Папка картинок %1: файлов %2, проверено %3.",
                              "Folder of pictures %1: %2 files, %3 checked.")
                             .with(folder, files.size(), checked),
                         details)};
    append(findings, std::move(problems));
    append(findings, checkNames(folder, files, namesInCatalogue));
    return findings;
}

} // namespace doctor
