// SPDX-License-Identifier: MIT
#include "ClientSide.h"

#include "protocol/AgnssTags.h"
#include "seeds/Seed.h"
#include "service/Options.h"
#include "service/Replies.h"

#include <QtTest>

#include <cstring>
#include <numeric>

using namespace service;

namespace {

constexpr std::int64_t kNow = 1773480413123;
constexpr std::int64_t kHour = 3600000;

Verdict Check(const QByteArray& path, const QByteArray& query, const QByteArray& authorization,
              const char* method = "GET")
{
    return CheckRequest(
        {method, path.toStdString(), query.toStdString(), !authorization.isNull(), authorization.toStdString()},
        TestCredentials(), kNow);
}

Verdict CheckSigned(const QByteArray& path, const QByteArray& query, qint64 timestamp = kNow)
{
    return Check(path, query, Authorization(path, query, timestamp));
}

struct Walked {
    std::vector<TaggedRecord> records;
    bool whole = true;
};

/// Reads a body as the workbench does.
Walked Walk(const std::string& body)
{
    Walked walked;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(body.data());
    for (std::size_t at = 0; walked.whole && body.size() - at >= 5;) {
        const std::size_t length = protocol::ReadU16(bytes + at + 2);
        const auto* end = bytes + at + 4 + length;
        walked.whole = body.size() - at >= length + 5 &&
                       static_cast<std::uint8_t>(std::accumulate(bytes + at, end, 0)) == *end;
        if (walked.whole) {
            walked.records.push_back({protocol::ReadU16(bytes + at), {bytes + at + 4, end}});
        }
        at += length + 5;
    }
    return walked;
}

Verdict Good(bool seed)
{
    Verdict verdict;
    verdict.seed = seed;
    return verdict;
}

ServiceFaults With(const char* text)
{
    ServiceFaults faults;
    std::string error;
    if (!faults.Add(text, error)) {
        qFatal("%s", error.c_str());
    }
    return faults;
}

int SeedError(const std::string& body)
{
    seeds::Seed seed;
    return static_cast<int>(
        seeds::ParseSeed(reinterpret_cast<const std::uint8_t*>(body.data()), body.size(), seed));
}

} // namespace

class ServiceRulesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void GoodRequests()
    {
        QCOMPARE(CheckSigned(kSeedPath, "").period, 7u);
        QCOMPARE(CheckSigned(kSeedPath, "").status, 200);
        const Verdict seed = CheckSigned(kSeedPath, "period=28");
        QVERIFY(seed.status == 200 && seed.seed && seed.period == 28);
        const Verdict records = CheckSigned(kRecordsPath, "constellation=5&datatype=3");
        QVERIFY(records.status == 200 && !records.seed && records.constellation == 5 && records.dataType == 3);
        QCOMPARE(CheckSigned(kRecordsPath, "datatype=3").constellation, 15u);
        QCOMPARE(CheckSigned(kRecordsPath, "constellation=8").dataType, 31u);
        // A clock in a zone far from UTC+8 is up to 20 hours off, and still within the day.
        QCOMPARE(CheckSigned(kSeedPath, "", kNow - 20 * kHour).status, 200);
        QCOMPARE(CheckSigned(kSeedPath, "", kNow + 6 * kHour).status, 200);
        QCOMPARE(CheckSigned(kSeedPath, "", kNow - 24 * kHour).status, 200);
    }

    void Refusals()
    {
        const auto status = [](const Verdict& verdict) {
            return verdict.problem.empty() == (verdict.status == 200) ? verdict.status : -1;
        };
        const QByteArray good = Authorization(kSeedPath, "", kNow);
        QCOMPARE(status(CheckSigned("/lumat/v1/xgnss/other", "")), 404);
        QCOMPARE(status(CheckSigned("/lumat/v1/xgnss/pgnss/", "")), 404);
        QCOMPARE(status(Check(kSeedPath, "", good, "POST")), 400);
        QCOMPARE(status(Check(kSeedPath, "", QByteArray())), 401);
        for (const QByteArray& bad :
             {QByteArray(""), QByteArray("Basic abc"), good.left(40), QByteArray(good).replace("HMAC", "hmac"),
              QByteArray(good).replace(",timestamp", ", timestamp"),
              QByteArray(good).replace("timestamp=1", "timestamp=01"),
              QByteArray(good).replace("timestamp=1", "timestamp=99999999991"),
              good.left(good.indexOf("signature=") + 10)}) {
            QVERIFY2(status(Check(kSeedPath, "", bad)) == 400, bad);
        }
        QCOMPARE(status(Check(kSeedPath, "", Authorization(kSeedPath, "", kNow, "qfixdemo2"))), 401);
        QCOMPARE(status(CheckSigned(kSeedPath, "", kNow - 24 * kHour - 1)), 403);
        QCOMPARE(status(CheckSigned(kSeedPath, "", kNow + 24 * kHour + 1)), 403);
        QCOMPARE(status(CheckSigned(kSeedPath, "", std::numeric_limits<qint64>::min())), 403);
        QCOMPARE(status(CheckSigned(kSeedPath, "", std::numeric_limits<qint64>::max())), 403);
        QCOMPARE(status(Check(kSeedPath, "", Authorization(kSeedPath, "", kNow, kTestAppid, "other"))), 403);
        // The signature is over exactly this path and query.
        QCOMPARE(status(Check(kSeedPath, "period=14", good)), 403);
        QCOMPARE(status(Check(kRecordsPath, "", good)), 403);
        QCOMPARE(status(Check(kSeedPath, "period=3", Authorization(kSeedPath, "period=03", kNow))), 403);
        for (const char* query : {"period=2", "period=014", "period=", "period=7x", "days=7", "period=7&", "&",
                                  "period=7&period=7", "constellation=1"}) {
            QVERIFY2(status(CheckSigned(kSeedPath, query)) == 400, query);
        }
        for (const char* query : {"constellation=0", "constellation=32", "datatype=0", "datatype=32", "period=7",
                                  "datatype=-1", "constellation=1&&datatype=1"}) {
            QVERIFY2(status(CheckSigned(kRecordsPath, query)) == 400, query);
        }
    }

    void RecordsFollowTheMasks()
    {
        const auto tags = [](std::uint32_t constellation, std::uint32_t dataType) {
            std::vector<int> found;
            for (const TaggedRecord& record : MakeRecords(constellation, dataType, kNow)) {
                found.push_back(record.tag);
            }
            return found;
        };
        QCOMPARE(tags(1, 31), (std::vector<int>{1, 2, 3, 4, 5, 6}));
        QCOMPARE(tags(2, 1), (std::vector<int>{33, 34}));
        QCOMPARE(tags(4, 2 + 16), (std::vector<int>{65, 67, 70}));
        QCOMPARE(tags(8, 4 + 8), (std::vector<int>{97, 100, 101}));
        QCOMPARE(tags(15, 31).size(), std::size_t{24});
        QCOMPARE(tags(16, 31).size(), std::size_t{0});
    }

    void SeedsCoverTheirPeriod()
    {
        for (const std::uint32_t period : {1u, 28u}) {
            Verdict verdict = Good(true);
            verdict.period = period;
            const std::string body = MakeBody(verdict, ServiceFaults(), kNow);
            seeds::Seed seed;
            QCOMPARE(int(seeds::ParseSeed(reinterpret_cast<const std::uint8_t*>(body.data()), body.size(), seed)),
                     0);
            const std::int64_t now = kNow / 1000;
            // Usable now and an hour before the period's end.
            QVERIFY(seed.validStart <= now && now + std::int64_t{period} * 86400 <= seed.validEnd);
            QVERIFY(body.size() < std::size_t{period} * 81920);
        }
    }

    void SpoiltBodies()
    {
        const std::string whole = MakeBody(Good(false), ServiceFaults(), kNow);
        QVERIFY(Walk(whole).whole && Walk(whole).records.size() == 24);
        QVERIFY(MakeBody(Good(false), With("empty"), kNow).empty());
        QCOMPARE(MakeBody(Good(false), With("truncated"), kNow), whole.substr(0, whole.size() / 2));
        QCOMPARE(MakeBody(Good(false), With("truncated=3"), kNow), whole.substr(0, 3));
        QVERIFY(!Walk(whole.substr(0, whole.size() / 2)).whole);
        Walked walked = Walk(MakeBody(Good(false), With("bad-checksum=4"), kNow));
        QVERIFY(!walked.whole && walked.records.size() == 3);
        walked = Walk(MakeBody(Good(false), With("bad-checksum=1000"), kNow));
        QVERIFY(!walked.whole && walked.records.size() == 23);
        walked = Walk(MakeBody(Good(false), With("unknown-tag=300"), kNow));
        QVERIFY(walked.whole && walked.records.size() == 25 && walked.records[12].tag == 300);
        QVERIFY(protocol::FindAgnssTag(300) == nullptr);
        const std::string huge = MakeBody(Good(false), With("huge=2"), kNow);
        QCOMPARE(huge.size(), std::size_t{2} << 20);
        walked = Walk(huge);
        QVERIFY(!walked.whole && walked.records.size() == 24);

        QCOMPARE(SeedError(MakeBody(Good(true), With("bad-checksum"), kNow)), 8);
        QCOMPARE(SeedError(MakeBody(Good(true), With("truncated"), kNow)), 3);
        QCOMPARE(SeedError(MakeBody(Good(true), With("huge=1"), kNow)), 7);
        const std::string old = MakeBody(Good(true), With("expired"), kNow);
        seeds::Seed seed;
        QCOMPARE(int(seeds::ParseSeed(reinterpret_cast<const std::uint8_t*>(old.data()), old.size(), seed)), 0);
        QVERIFY(seed.validEnd < kNow / 1000);
    }

    void CommandLine()
    {
        Options options;
        std::string text;
        QVERIFY(ParseOptions(
                    {"--folder", "/f", "--port", "1", "--port", "08443", "--fault", "slow=20", "--fault", "empty"},
                    options, text) == OptionsResult::Run);
        QVERIFY(options.folder == "/f" && options.port == 8443 && options.faults.slowMillis == 20 &&
                options.faults.empty);
        for (const std::vector<std::string>& bad : {std::vector<std::string>{"--port"},
                                                    {"--port", "65536"},
                                                    {"--port", "x"},
                                                    {"--port=80"},
                                                    {"--folder=", "/f"},
                                                    {"--die-with-parent=1"},
                                                    {"file"},
                                                    {"--folder", ""},
                                                    {"--fault", "slow"},
                                                    {"--fault", "empty=1"},
                                                    {"--fault", "nothing"},
                                                    {"--fault", "status=200"}}) {
            text.clear();
            QVERIFY(ParseOptions(bad, options, text) == OptionsResult::Bad && !text.empty());
        }
        QVERIFY(ParseOptions({"--list-faults"}, options, text) == OptionsResult::Told);
        QVERIFY(text.find("\nunknown-tag[=TAG]         a record") != std::string::npos);
    }
};

QTEST_GUILESS_MAIN(ServiceRulesTest)
#include "tst_rules.moc"
