#include "tests/support/damage.h"

// Tells the outcomes for 0, 1, 2 and so on.
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

std::vector<std::string> TellDamaged(const Bytes &good, size_t wild,
                                     const std::function<std::string(const Bytes &)> &outcomeOf)
{
    std::vector<std::string> told;
    TellOutcomes(&told, "Cut to this many bytes:", good.size() + 1, [&](size_t length) {
        return outcomeOf(Bytes(good.begin(), good.begin() + (ptrdiff_t)length));
    });
    // None that makes a letter which the system finds another for.
    for (const int value : {0x00, 0x80, 0xFE})
        TellOutcomes(&told, "This byte is " + std::to_string(value) + ":", wild, [&](size_t at) {
            Bytes bytes = good;
            bytes[at] = (unsigned char)value;
            return outcomeOf(bytes);
        });
    return told;
}
