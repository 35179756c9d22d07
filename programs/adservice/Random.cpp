#include <adservice/Random.h>

#include <QRandomGenerator>

#include <algorithm>

QByteArray randomBytes(qsizetype count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    auto *generator = QRandomGenerator::system();
    std::generate(bytes.begin(), bytes.end(),
                  [=] { return static_cast<char>(generator->bounded(256)); });
    return bytes;
}
