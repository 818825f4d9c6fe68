// What comes of bytes that are damaged, as lines of a transcript.
#pragma once

#include "samples/builder/bytes.h"

#include <functional>
#include <string>
#include <vector>

// Tells the outcome for the bytes wherever they are cut, and with each of their first `wild` bytes
// wild in turn. Outcomes that follow one another and are the same are told once.
std::vector<std::string> TellDamaged(const Bytes &good, size_t wild,
                                     const std::function<std::string(const Bytes &)> &outcomeOf);
