#include "tests/support/reading.h"

#include "exe/tree_items.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <functional>

Reading ReadBytes(const Bytes &bytes)
{
    Reading reading = {};
    FILE *file = OpenContent(bytes);
    reading.outcome = ProbeFile(nullptr, file);
    fclose(file);
    reading.failure = NotedFailure();
    ResourceEntry entry = {};
    for (LONG i = 0; i < openCatalog.count; i++) {
        GetEntry(openCatalog.entries, &entry, i);
        reading.entries.push_back(std::string(CategoryLabel(entry.category)) + " " + entry.name +
                                  " " + std::to_string(entry.size) + (entry.isWave ? " wave" : ""));
        const BYTE *data = (const BYTE *)GlobalLock(entry.data);
        reading.data.emplace_back(data, data + entry.size);
        GlobalUnlock(entry.data);
    }
    ReleaseCatalog(&openCatalog);
    EXPECT_EQ(openCatalog.entries, nullptr);
    EXPECT_EQ(openCatalog.count, 0);
    EXPECT_EQ(GlobalLock(entry.data), nullptr); // went with the catalogue
    return reading;
}

// What reading them gave, as one line of ASCII.
static std::string OutcomeOf(const Bytes &bytes)
{
    const Reading reading = ReadBytes(bytes);
    EXPECT_EQ(reading.outcome == ProbeRead, reading.failure == FailureNone);
    for (const Bytes &data : reading.data)
        EXPECT_LE(data.size(), bytes.size());
    char reason[REASON_SIZE] = "Read.";
    if (reading.outcome != ProbeRead || reading.entries.empty())
        DescribeFailure(reason);
    std::string outcome = reason;
    for (const std::string &entry : reading.entries)
        outcome += " " + entry + ".";
    for (char &letter : outcome)
        if (letter < ' ' || letter > '~')
            letter = '~';
    return outcome;
}

// Tells the outcomes for 0, 1, 2 and so on, those that follow one another and are the same once.
static void TellOutcomes(std::vector<std::string> *told, const std::string &heading, size_t count,
                         const std::function<std::string(size_t)> &outcomeFor)
{
    told->push_back(heading);
    std::string last = outcomeFor(0);
    for (size_t first = 0, at = 1; at <= count; at++) {
        const std::string outcome = at < count ? outcomeFor(at) : "";
        if (outcome == last)
            continue;
        told->push_back(std::to_string(first) + " to " + std::to_string(at - 1) + ": " + last);
        first = at;
        last = outcome;
    }
}

std::vector<std::string> TellDamaged(const Bytes &good)
{
    std::vector<std::string> told;
    TellOutcomes(&told, "Cut to this many bytes:", good.size(), [&](size_t length) {
        return OutcomeOf(Bytes(good.begin(), good.begin() + (ptrdiff_t)length));
    });
    // None that makes a letter which the system finds another for.
    for (const int value : {0x00, 0x80, 0xFE})
        TellOutcomes(&told, "This byte is " + std::to_string(value) + ":", good.size(),
                     [&](size_t at) {
                         Bytes bytes = good;
                         bytes[at] = (unsigned char)value;
                         return OutcomeOf(bytes);
                     });
    return told;
}
