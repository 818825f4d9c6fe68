#include "tests/support/reading.h"

#include "exe/tree_items.h"
#include "tests/support/damage.h"
#include "tests/support/temp_folder.h"

#include <gtest/gtest.h>

#include <algorithm>

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
    for (size_t i = 0; i < reading.entries.size(); i++) {
        const Bytes &data = reading.data[i];
        const auto end = data.begin() + (ptrdiff_t)std::min<size_t>(data.size(), 8);
        outcome += " " + reading.entries[i] + " " + std::string(data.begin(), end) + ".";
    }
    for (char &letter : outcome)
        if (letter < ' ' || letter > '~')
            letter = '~';
    return outcome;
}

std::vector<std::string> TellDamagedFile(const Bytes &good)
{
    return TellDamaged(good, good.size(), OutcomeOf);
}
