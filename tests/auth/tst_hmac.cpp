// SPDX-License-Identifier: MIT
// The reference values are the test cases of RFC 2202 (MD5, SHA-1) and RFC 4231 (SHA-2).
#include <CHmac.h>

#include <LoggedTest.h>

#include <QTest>

#include <array>
#include <atomic>
#include <thread>
#include <type_traits>
#include <vector>

using Algorithm = QCryptographicHash::Algorithm;

Q_DECLARE_METATYPE(QCryptographicHash::Algorithm)

static_assert(sizeof(CHmac) == sizeof(QMessageAuthenticationCode), "the MAC object is the only member");
static_assert(!std::is_copy_constructible<CHmac>::value && !std::is_copy_assignable<CHmac>::value,
              "a computation under way has no copy");

namespace {

QByteArray hex(const char *digits)
{
    return QByteArray::fromHex(digits);
}

QByteArray countedBytes(char first, char last)
{
    QByteArray bytes;
    for (char c = first; c <= last; ++c)
        bytes += c;
    return bytes;
}

void addCase(const char *name, Algorithm method, const QByteArray &key, const QByteArray &message,
             const char *mac)
{
    QTest::newRow(name) << method << key << message << hex(mac);
}

// The seven cases of RFC 2202; the first keys are as long as the hash.
void addRfc2202(const char *name, Algorithm method, int length, const std::array<const char *, 7> &macs)
{
    const auto add = [&](int number, const QByteArray &key, const QByteArray &message) {
        addCase(qPrintable(QStringLiteral("RFC 2202 %1 %2").arg(QLatin1String(name)).arg(number)), method,
                key, message, macs.at(size_t(number) - 1));
    };
    add(1, QByteArray(length, '\x0b'), "Hi There");
    add(2, "Jefe", "what do ya want for nothing?");
    add(3, QByteArray(length, '\xaa'), QByteArray(50, '\xdd'));
    add(4, countedBytes(1, 25), QByteArray(50, '\xcd'));
    add(5, QByteArray(length, '\x0c'), "Test With Truncation");
    add(6, QByteArray(80, '\xaa'), "Test Using Larger Than Block-Size Key - Hash Key First");
    add(7, QByteArray(80, '\xaa'),
        "Test Using Larger Than Block-Size Key and Larger Than One Block-Size Data");
}

// The cases of RFC 4231; of the fifth, it gives the first 128 bits only.
void addRfc4231(const char *name, Algorithm method, const std::array<const char *, 7> &macs)
{
    const auto add = [&](int number, const QByteArray &key, const QByteArray &message) {
        addCase(qPrintable(QStringLiteral("RFC 4231 %1 %2").arg(QLatin1String(name)).arg(number)), method,
                key, message, macs.at(size_t(number) - 1));
    };
    add(1, QByteArray(20, '\x0b'), "Hi There");
    add(2, "Jefe", "what do ya want for nothing?");
    add(3, QByteArray(20, '\xaa'), QByteArray(50, '\xdd'));
    add(4, countedBytes(1, 25), QByteArray(50, '\xcd'));
    add(5, QByteArray(20, '\x0c'), "Test With Truncation");
    add(6, QByteArray(131, '\xaa'), "Test Using Larger Than Block-Size Key - Hash Key First");
    add(7, QByteArray(131, '\xaa'),
        "This is a test using a larger than block-size key and a larger than block-size data. "
        "The key needs to be hashed before being used by the HMAC algorithm.");
}

void addReferenceRows()
{
    QTest::addColumn<Algorithm>("method");
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QByteArray>("mac");

    addRfc2202("MD5", QCryptographicHash::Md5, 16,
               {"9294727a3638bb1c13f48ef8158bfc9d", "750c783e6ab0b503eaa86e310a5db738",
                "56be34521d144c88dbb8c733f0e8b3f6", "697eaf0aca3a3aea3a75164746ffaa79",
                "56461ef2342edc00f9bab995690efd4c", "6b1ab7fe4bd7bf8f0b62e6ce61b9d0cd",
                "6f630fad67cda0ee1fb1f562db3aa53e"});
    addRfc2202("SHA-1", QCryptographicHash::Sha1, 20,
               {"b617318655057264e28bc0b6fb378c8ef146be00", "effcdf6ae5eb2fa2d27416d5f184df9c259a7c79",
                "125d7342b9ac11cd91a39af48aa17b4f63f175d3", "4c9007f4026250c6bc8414f9bf50c86c2d7235da",
                "4c1a03424b55e07fe7f27be1d58bb9324a9a5a04", "aa4ae5e15272d00e95705637ce8a3b55ed402112",
                "e8e99d0f45237d786d6bbaa7965c7808bbff1a91"});
    addRfc4231("SHA-224", QCryptographicHash::Sha224,
               {"896fb1128abbdf196832107cd49df33f47b4b1169912ba4f53684b22",
                "a30e01098bc6dbbf45690f3a7e9e6d0f8bbea2a39e6148008fd05e44",
                "7fb3cb3588c6c1f6ffa9694d7d6ad2649365b0c1f65d69d1ec8333ea",
                "6c11506874013cac6a2abc1bb382627cec6a90d86efc012de7afec5a",
                "0e2aea68a90c8d37c988bcdb9fca6fa8",
                "95e9a0db962095adaebe9b2d6f0dbce2d499f112f2d2b7273fa6870e",
                "3a854166ac5d9f023f54d517d0b39dbd946770db9c2b95c9f6f565d1"});
    addRfc4231("SHA-256", QCryptographicHash::Sha256,
               {"b0344c61d8db38535ca8afceaf0bf12b881dc200c9833da726e9376c2e32cff7",
                "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843",
                "773ea91e36800e46854db8ebd09181a72959098b3ef8c122d9635514ced565fe",
                "82558a389a443c0ea4cc819899f2083a85f0faa3e578f8077a2e3ff46729665b",
                "a3b6167473100ee06e0c796c2955552b",
                "60e431591ee0b67f0d8a26aacbf5b77f8e0bc6213728c5140546040f0ee37f54",
                "9b09ffa71b942fcb27635fbcd5b0e944bfdc63644f0713938a7f51535c3a35e2"});
    addRfc4231("SHA-384", QCryptographicHash::Sha384,
               {"afd03944d84895626b0825f4ab46907f15f9dadbe4101ec682aa034c7cebc59c"
                "faea9ea9076ede7f4af152e8b2fa9cb6",
                "af45d2e376484031617f78d2b58a6b1b9c7ef464f5a01b47e42ec3736322445e"
                "8e2240ca5e69e2c78b3239ecfab21649",
                "88062608d3e6ad8a0aa2ace014c8a86f0aa635d947ac9febe83ef4e55966144b"
                "2a5ab39dc13814b94e3ab6e101a34f27",
                "3e8a69b7783c25851933ab6290af6ca77a9981480850009cc5577c6e1f573b4e"
                "6801dd23c4a7d679ccf8a386c674cffb",
                "3abf34c3503b2a23a46efc619baef897",
                "4ece084485813e9088d2c63a041bc5b44f9ef1012a2b588f3cd11f05033ac4c6"
                "0c2ef6ab4030fe8296248df163f44952",
                "6617178e941f020d351e2f254e8fd32c602420feb0b8fb9adccebb82461e99c5"
                "a678cc31e799176d3860e6110c46523e"});
    addRfc4231("SHA-512", QCryptographicHash::Sha512,
               {"87aa7cdea5ef619d4ff0b4241a1d6cb02379f4e2ce4ec2787ad0b30545e17cde"
                "daa833b7d6b8a702038b274eaea3f4e4be9d914eeb61f1702e696c203a126854",
                "164b7a7bfcf819e2e395fbe73b56e0a387bd64222e831fd610270cd7ea250554"
                "9758bf75c05a994a6d034f65f8f0e6fdcaeab1a34d4a6b4b636e070a38bce737",
                "fa73b0089d56a284efb0f0756c890be9b1b5dbdd8ee81a3655f83e33b2279d39"
                "bf3e848279a722c806b485a47e67c807b946a337bee8942674278859e13292fb",
                "b0ba465637458c6990e5a8c5f61d4af7e576d97ff94b872de76f8050361ee3db"
                "a91ca5c11aa25eb4d679275cc5788063a5f19741120c4f2de2adebeb10a298dd",
                "415fad6271580a531d4179bc891d87a6",
                "80b24263c7c1a3ebb71493c1dd7be8b49b46d1f41b4aeec1121b013783f8f352"
                "6b56d037e05f2598bd0fd2215d6a1e5295e64f73f63f0aec8b915a985d786598",
                "e37b6a775dc87dbaa4dfa9f96e5e3ffddebd71f8867289865df5a32d20cdc944"
                "b6022cac3c4982b10d5eeb55c3e4de15134676fb6de0446065c97440fa8c6a58"});
}

const QByteArray jefe = QByteArrayLiteral("Jefe");
const QByteArray question = QByteArrayLiteral("what do ya want for nothing?");
const QByteArray questionSha1 = hex("effcdf6ae5eb2fa2d27416d5f184df9c259a7c79");

} // namespace

class tst_hmac : public LoggedTest
{
    Q_OBJECT

private Q_SLOTS:
    void referenceValues_data();
    void referenceValues();
    void objectTakesDataInParts_data();
    void objectTakesDataInParts();
    void resetBeginsAnewUnderTheSameKey();
    void setKeyBeginsAnew();
    void dataBehindAResultCountsAfterResetOnly();
    void emptyKeyAndMessage();
    void keysAreBytes();
    void base64TextOfSha1_data();
    void base64TextOfSha1();
    void base64TextHasAlways28Characters();
    void runsInSeveralThreads();
    void exampleOfTheClassComment();
};

void tst_hmac::referenceValues_data()
{
    addReferenceRows();
}

void tst_hmac::referenceValues()
{
    QFETCH(Algorithm, method);
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, message);
    QFETCH(QByteArray, mac);

    const QByteArray result = CHmac::hmac(message, method, key);
    QCOMPARE(result.size(), QCryptographicHash::hashLength(method));
    QCOMPARE(result.left(mac.size()), mac);
}

void tst_hmac::objectTakesDataInParts_data()
{
    addReferenceRows();
}

void tst_hmac::objectTakesDataInParts()
{
    QFETCH(Algorithm, method);
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, message);
    QFETCH(QByteArray, mac);

    CHmac whole(method, key);
    whole.addData(message);
    QCOMPARE(whole.result().left(mac.size()), mac);

    CHmac bytewise(method, key);
    for (const char byte : qAsConst(message))
        bytewise.addData(QByteArray(1, byte));
    bytewise.addData(QByteArray());
    QCOMPARE(bytewise.result().left(mac.size()), mac);
}

void tst_hmac::resetBeginsAnewUnderTheSameKey()
{
    CHmac mac(QCryptographicHash::Sha1, jefe);
    mac.addData("something else");
    mac.resetData();
    mac.addData(question);
    QCOMPARE(mac.result(), questionSha1);
    mac.resetData();
    mac.addData(question);
    QCOMPARE(mac.result(), questionSha1);
}

void tst_hmac::setKeyBeginsAnew()
{
    CHmac mac(QCryptographicHash::Sha1, "another key");
    mac.addData("something else");
    mac.setKey(jefe);
    mac.addData(question);
    QCOMPARE(mac.result(), questionSha1);
    mac.setKey(QByteArray(20, '\x0b'));
    mac.addData("Hi There");
    QCOMPARE(mac.result(), hex("b617318655057264e28bc0b6fb378c8ef146be00"));
}

void tst_hmac::dataBehindAResultCountsAfterResetOnly()
{
    CHmac mac(QCryptographicHash::Sha1, jefe);
    mac.addData(question);
    QCOMPARE(mac.result(), questionSha1);
    mac.addData("more");
    QCOMPARE(mac.result(), questionSha1);
    mac.resetData();
    mac.addData(question);
    QCOMPARE(mac.result(), questionSha1);
}

void tst_hmac::emptyKeyAndMessage()
{
    // Published values of HMAC with both empty.
    const QByteArray md5 = hex("74e6f7298a9c2d168935f58c001bad88");
    const QByteArray sha1 = hex("fbdb1d1b18aa6c08324b7d64b71fb76370690e1d");
    const QByteArray sha256 = hex("b613679a0814d9ec772f95d778c35fc5ff1697c493715653c6c712144292c5ad");
    for (const QByteArray &empty : {QByteArray(), QByteArray("")}) {
        QCOMPARE(CHmac::hmac(empty, QCryptographicHash::Md5, empty), md5);
        QCOMPARE(CHmac::hmac(empty, QCryptographicHash::Sha1, empty), sha1);
        QCOMPARE(CHmac::hmac(empty, QCryptographicHash::Sha256, empty), sha256);
        QCOMPARE(CHmac(QCryptographicHash::Sha1, empty).result(), sha1);
        QCOMPARE(CHmac::hmacSha1(empty, empty), sha1.toBase64());
    }
}

void tst_hmac::keysAreBytes()
{
    // Keys are filled up with zeros to the block size of the hash, so these are the same key.
    QCOMPARE(CHmac::hmac(question, QCryptographicHash::Sha1, QByteArray("Jefe\0\0", 6)), questionSha1);
    QVERIFY(CHmac::hmac(question, QCryptographicHash::Sha1, QByteArray("\0Jefe", 5)) != questionSha1);
    QVERIFY(CHmac::hmac(question + '\0', QCryptographicHash::Sha1, jefe) != questionSha1);
}

void tst_hmac::base64TextOfSha1_data()
{
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<QByteArray>("message");
    QTest::addColumn<QByteArray>("text");

    // The Base64 forms of RFC 2202's values, and one with both characters beyond letters and digits.
    QTest::newRow("RFC 2202 1") << QByteArray(20, '\x0b') << QByteArray("Hi There")
                                << QByteArray("thcxhlUFcmTii8C2+zeMjvFGvgA=");
    QTest::newRow("RFC 2202 2") << jefe << question << QByteArray("7/zfauXrL6LSdBbV8YTfnCWafHk=");
    QTest::newRow("plus and slash") << QByteArray("12345678901234567890") << hex("FFFFFFFFFFFFFF7F")
                                    << QByteArray("H+NYAxQEOM85l0FJnaJ3hnB4YxE=");
}

void tst_hmac::base64TextOfSha1()
{
    QFETCH(QByteArray, key);
    QFETCH(QByteArray, message);
    QFETCH(QByteArray, text);
    QCOMPARE(CHmac::hmacSha1(message, key), text);
}

void tst_hmac::base64TextHasAlways28Characters()
{
    for (int length = 0; length < 200; ++length) {
        const QByteArray text = CHmac::hmacSha1(QByteArray(length, 'x'), QByteArray(length / 2, 'k'));
        QCOMPARE(text.size(), 28);
        QVERIFY(text.endsWith('='));
        QVERIFY(!text.chopped(1).contains('='));
    }
}

void tst_hmac::runsInSeveralThreads()
{
    std::atomic<int> faults{0};
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&faults] {
            for (int round = 0; round < 500; ++round) {
                if (CHmac::hmac(question, QCryptographicHash::Sha1, jefe) != questionSha1
                    || CHmac::hmacSha1(question, jefe) != "7/zfauXrL6LSdBbV8YTfnCWafHk="
                    || CHmac::totpStr(jefe, 0, 1, 6).size() != 6)
                    ++faults;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(faults.load(), 0);
}

void tst_hmac::exampleOfTheClassComment()
{
    CHmac mac(QCryptographicHash::Sha1, QByteArrayLiteral("Jefe"));
    mac.addData(QByteArrayLiteral("what do ya want "));
    mac.addData(QByteArrayLiteral("for nothing?"));
    QCOMPARE(mac.result().toHex(), QByteArray("effcdf6ae5eb2fa2d27416d5f184df9c259a7c79"));

    const QByteArray key = QByteArrayLiteral("12345678901234567890");
    const QString code = CHmac::totpStr(key, 0, 30, 6);
    QCOMPARE(CHmac::validateTotp(code, key, 0, 30, 6, 1), 0);
}

QTEST_GUILESS_MAIN(tst_hmac)
#include "tst_hmac.moc"
