// Key agreement with a peer that does not use this library: the openssl command.

#include <KeyAgreement.h>

#include <support/PrintQt.h>

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class OpenSslCommand : public testing::Test
{
protected:
    QString path(const char *name) const { return folder.filePath(QString::fromLatin1(name)); }

    /// Runs openssl in the folder; returns its standard output.
    QByteArray openssl(const QStringList &arguments) const
    {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(QStringLiteral("openssl"), arguments);
        EXPECT_TRUE(process.waitForFinished()) << process.errorString().toStdString();
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput();
    }

    void write(const char *name, const QByteArray &content) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    QTemporaryDir folder;
};

const QStringList newKey{"genpkey",  "-algorithm", "EC",   "-pkeyopt", "ec_paramgen_curve:P-256",
                         "-outform", "DER",        "-out", "peer.der"};
const QStringList publicPart{"pkey", "-in",     "peer.der", "-inform",
                             "DER",  "-pubout", "-outform", "DER"};
const QStringList inPkcs8{"pkcs8",   "-topk8", "-nocrypt", "-in", "peer.der",
                          "-inform", "DER",    "-outform", "DER"};
const QStringList agreement{"pkeyutl", "-derive",  "-inkey",  "peer.der",  "-keyform",
                            "DER",     "-peerkey", "own.der", "-peerform", "DER"};

} // namespace

TEST_F(OpenSslCommand, Agrees_on_the_same_key)
{
    const auto [privateKey, publicKey] = ssl::generateKeyPairEC();
    openssl(newKey);
    write("own.der", publicKey.der());

    const auto peer = ssl::PublicKey::fromDer(openssl(publicPart));
    ASSERT_TRUE(peer.isValid());
    const auto key = ssl::deriveKey(privateKey, peer);
    EXPECT_EQ(QByteArray(reinterpret_cast<const char *>(key.data()), std::ssize(key)),
              openssl(agreement));
}

TEST_F(OpenSslCommand, Reads_the_private_key_as_the_other_half_of_the_public_one)
{
    const auto [privateKey, publicKey] = ssl::generateKeyPairEC();
    write("peer.der", privateKey.der());
    EXPECT_EQ(openssl(publicPart), publicKey.der());
}

TEST_F(OpenSslCommand, Makes_private_keys_that_are_read)
{
    openssl(newKey);
    EXPECT_TRUE(ssl::PrivateKey::fromDer(openssl(inPkcs8)).isValid());
}
