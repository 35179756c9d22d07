// Stands in for libFuzzer in an ordinary build: gives a target each file of its corpus, and as many
// changed ones as were asked for, the same ones each time. The input under way is kept in a file,
// which is left behind if it ends the program.
//   TARGET CORPUS MUTATIONS

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QList>

#include <cstdint>
#include <cstdio>
#include <random>

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size);

namespace {

/// Changes inputs by chance, from one seed.
class Mutator
{
public:
    explicit Mutator(const QList<QByteArray> &corpus) : m_corpus(corpus) {}

    QByteArray next()
    {
        QByteArray input = any();
        for (auto edits = below(4) + 1; edits > 0; --edits)
            edit(input);
        return input;
    }

private:
    qsizetype below(qsizetype limit)
    {
        return limit < 1 ? 0 : static_cast<qsizetype>(m_random() % static_cast<quint64>(limit));
    }
    const QByteArray &any() { return m_corpus.at(below(m_corpus.size())); }

    void edit(QByteArray &input)
    {
        const auto at = below(input.size());
        const auto length = below(input.size() - at) + 1;
        switch (below(6)) {
        case 0:
            if (!input.isEmpty())
                input[at] = static_cast<char>(input[at] ^ 1 << below(8));
            break;
        case 1:
            input.insert(at, static_cast<char>(below(256)));
            break;
        case 2:
            input.remove(at, length);
            break;
        case 3:
            input.insert(at, input.mid(at, length));
            break;
        case 4:
            input.truncate(at);
            break;
        default:
            input.replace(at, length, any().mid(at));
        }
    }

    const QList<QByteArray> &m_corpus;
    std::mt19937_64 m_random{1};
};

QList<QByteArray> readCorpus(const QString &folder)
{
    QList<QByteArray> corpus;
    const auto names = QDir(folder).entryList(QDir::Files, QDir::Name);
    for (const auto &name : names) {
        QFile file(folder + u'/' + name);
        if (file.open(QIODevice::ReadOnly))
            corpus.append(file.readAll());
    }
    return corpus;
}

void run(const QByteArray &input, QFile &kept)
{
    kept.resize(0);
    kept.seek(0);
    kept.write(input);
    kept.flush();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(input.constData()),
                           static_cast<std::size_t>(input.size()));
}

} // namespace

int main(int argc, char **argv)
{
    const auto corpus = argc == 3 ? readCorpus(QFile::decodeName(argv[1])) : QList<QByteArray>();
    QFile kept(QFile::decodeName(argv[0]) + QStringLiteral(".input"));
    if (corpus.isEmpty() || !kept.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "usage: %s CORPUS MUTATIONS, with files in CORPUS\n", argv[0]);
        return 2;
    }
    const auto mutations = QByteArray(argv[2]).toInt();
    LLVMFuzzerInitialize(&argc, &argv);
    for (const auto &input : corpus)
        run(input, kept);
    Mutator mutator(corpus);
    for (int i = 0; i < mutations; ++i)
        run(mutator.next(), kept);
    kept.remove();
    std::fprintf(stderr, "%lld files and %d changed ones\n", static_cast<long long>(corpus.size()),
                 mutations);
    return 0;
}
