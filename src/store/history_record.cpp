// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/history_record.h"

#include "json/json_reader.h"
#include "json/json_writer.h"

#include <new>
#include <zlib.h>

namespace veltrix
{

namespace
{

constexpr char firstDictionaryNumber = 1;

/// Never to be changed: what was packed with it is read with it. What is frequent stands last.
constexpr QByteArrayView firstDictionary{
    R"(No search results available for a popularity estimate."},"adjustment":"No app results."},)"
    R"("label":"Worth Climbing","explanation":"Demand exists, but competition limits the modeled )"
    R"(opportunity for your app today. "label":"Low Volume","explanation":"The model estimates )"
    R"(little demand even at #1. "label":"Supporting","explanation":"A supporting keyword with )"
    R"(modest modeled opportunity. New-app baseline: storefront metadata for your app was )"
    R"(unavailable. "adjustment":"Adjusted from 50 for a small result set, weak leader or weak )"
    R"(field."},Estimated popularity at the minimum: no matching title evidence in sampled )"
    R"(results. This does not establish zero search demand or official Apple popularity.)"
    R"("source":"apple_search_popularity"calibrated_search_demand"apple_autocomplete_estimate")"
    R"("country":"GB","storefront":"143444-2,29","language":"en-gb","country":"DE","storefront":)"
    R"("143443-4,29","language":"de-de",FRJPCAAUINBRITESMXKRCN; this storefront is outside the )"
    R"(reported US calibration."possibleBrand":true},"usedNewAppBaseline":true},:null,)"
    R"({"id":"00000000-0000-4000-8000-000000000000","trackedKeywordId":")"
    R"(0123456789ABCDEF-4-8-9-A-B","keyword":"photo editor free app game tracker planner","country":)"
    R"("US","fetchedAt":784000000.000000,"popularityRaw":12345.678901234567,"popularityScore":42,)"
    R"("difficultyScore":50,"difficultyComponents":{"sampledAppCount":10,"missingReviewCount":0,)"
    R"("missingReleaseDateCount":0,"averageReviewsTop10":100000.1,"averageAgeYearsTop10":)"
    R"(5.1234567890123456,"averageKeywordMatchTop10":0.5,"reviewComponent":0.9,"ageComponent":0.9,)"
    R"("matchComponent":0.1,"reviewsWeight":0.5,"ageWeight":0.2,"matchWeight":0.3},"position":10,)"
    R"("competitorIcons":["https://is1-ssl.mzstatic.com/image/thumb/Purple221/v4/00/1a/2b/)"
    R"(-0-0-1x_U007emarketing-0-7-0-85-220.png/100x100bb.jpg","https://is2-ssl.mzstatic.com/image/)"
    R"(thumb/Purple211/v4/AppIcon-0-0-85-220-0-4-0-2x.png/100x100bb.jpg"],"popularityMeasurement":)"
    R"({"score":42,"source":"quorvin_calibrated_estimate","modelVersion":"quorvin-v2-relevance-3",)"
    R"("sampledApps":25,"ratedRelevantApps":11,"weightedRatingSignal":12345.678901234567},)"
    R"("popularityModelVersion":"quorvin-v2-relevance-3","popularityStatus":"Estimated popularity )"
    R"(using Quorvin v2. Upstream calibration used US data; not official Apple popularity. )"
    R"(Accuracy has not been independently validated here.","autocompleteEvidence":{"keyword":")"
    R"(","country":"US","storefront":"143441-1,29","language":"en-us","probes":[{"prefix":")"
    R"(","suggestions":["photo editor","photo editor free"],"fetchedAt":784000000.123456},{)"
    R"("prefix":"","suggestions":["","",""],"fetchedAt":784000000.654321,"exactRank":1}],)"
    R"("plannedProbes":5,"observedDays":7,"dailyScore":50,"scoreSpread":5,"possibleBrand":false},)"
    R"("competition":{"score":50,"sampleCount":25,"factors":{"App age":50.123456789012345,)"
    R"("Dominant apps":50.123456789012345,"Publisher diversity":100,"Rating momentum":)"
    R"(50.123456789012345,"Rating quality":90.123456789012345,"Rating volume":)"
    R"(50.123456789012345,"Title relevance":50.123456789012345},"adjustment":"No small-sample )"
    R"(or weak-leader correction applied."},"opportunity":{"score":50,"label":"Sweet Spot",)"
    R"("label":"Good Target","explanation":"Demand and your app’s competitive strength support )"
    R"(targeting this keyword. Opportunity 50/100; popularity 42, difficulty 50. Uses your app’s )"
    R"(storefront ratings, stars and age. Assumes title targeting, storefront market size and a )"
    R"(5% install conversion. Estimates—not promised rankings or downloads.","appStrength":)"
    R"(50.123456789012345,"usedNewAppBaseline":false},"scoringModelVersion":)"
    R"("quorvin-opportunity-v1"})"};

const Bytef *bytesOf(QByteArrayView view)
{
    return reinterpret_cast<const Bytef *>(view.data());
}

/// zlib fails for nothing but memory when it is asked for what it can do.
void require(int code, int expected)
{
    if (code != expected)
        throw std::bad_alloc();
}

[[noreturn]] void failOnDamage()
{
    throw DecodingError(QStringLiteral("A record of the history is damaged"));
}

} // namespace

struct HistoryRecords::Streams {
    Streams()
    {
        require(deflateInit(&packing, Z_DEFAULT_COMPRESSION), Z_OK);
        if (inflateInit(&unpacking) != Z_OK) {
            deflateEnd(&packing);
            throw std::bad_alloc();
        }
    }
    ~Streams()
    {
        deflateEnd(&packing);
        inflateEnd(&unpacking);
    }
    Streams(const Streams &) = delete;
    Streams &operator=(const Streams &) = delete;

    z_stream packing{};
    z_stream unpacking{};
};

HistoryRecords::HistoryRecords() : m_streams(std::make_unique<Streams>()) {}
HistoryRecords::~HistoryRecords() = default;
HistoryRecords::HistoryRecords(HistoryRecords &&) noexcept = default;
HistoryRecords &HistoryRecords::operator=(HistoryRecords &&) noexcept = default;

QByteArray HistoryRecords::pack(const KeywordSnapshot &snapshot)
{
    const QByteArray json = toJson(snapshot);
    z_stream &stream = m_streams->packing;
    require(deflateReset(&stream), Z_OK);
    require(deflateSetDictionary(&stream, bytesOf(firstDictionary), uInt(firstDictionary.size())),
            Z_OK);
    QByteArray packed(qsizetype(deflateBound(&stream, uLong(json.size()))) + 1, Qt::Uninitialized);
    packed[0] = firstDictionaryNumber;
    stream.next_in = const_cast<Bytef *>(bytesOf(json));
    stream.avail_in = uInt(json.size());
    stream.next_out = reinterpret_cast<Bytef *>(packed.data() + 1);
    stream.avail_out = uInt(packed.size() - 1);
    require(deflate(&stream, Z_FINISH), Z_STREAM_END);
    packed.chop(qsizetype(stream.avail_out));
    return packed;
}

KeywordSnapshot HistoryRecords::unpack(QByteArrayView packed)
{
    // More than any record has; a damaged one may want to become endless.
    constexpr qsizetype longest = 64 * 1024 * 1024;
    if (packed.isEmpty() || packed[0] != firstDictionaryNumber)
        failOnDamage();
    z_stream &stream = m_streams->unpacking;
    require(inflateReset(&stream), Z_OK);
    stream.next_in = const_cast<Bytef *>(bytesOf(packed) + 1);
    stream.avail_in = uInt(packed.size() - 1);
    QByteArray json(8 * 1024, Qt::Uninitialized);
    qsizetype length = 0;
    for (int code = Z_OK; code != Z_STREAM_END;) {
        if (length == json.size())
            json.resize(2 * json.size());
        if (json.size() > longest)
            failOnDamage();
        stream.next_out = reinterpret_cast<Bytef *>(json.data() + length);
        stream.avail_out = uInt(json.size() - length);
        code = inflate(&stream, Z_NO_FLUSH);
        if (code == Z_NEED_DICT) {
            code = inflateSetDictionary(&stream, bytesOf(firstDictionary),
                                        uInt(firstDictionary.size()));
        }
        length = json.size() - qsizetype(stream.avail_out);
        const bool isCutOff = stream.avail_in == 0 && stream.avail_out > 0;
        if ((code != Z_OK && code != Z_STREAM_END) || (code == Z_OK && isCutOff))
            failOnDamage();
    }
    json.truncate(length);
    return fromJson<KeywordSnapshot>(json);
}

} // namespace veltrix
