// Reads an executable that a test made, and tells what was catalogued.
#pragma once

#include "exe/probe.h"
#include "exe/refusal.h"
#include "samples/builder/builder.h"

#include <string>
#include <vector>

struct Reading {
    ProbeOutcome outcome;
    FailureKind failure;
    std::vector<std::string> entries; // "CATEGORY NAME SIZE", and " wave" for a sound
    std::vector<Bytes> data;
};

// Expects of a file wherever it is cut and whichever byte is wild: a reading that succeeds has
// noted no failure, one that fails has; no entry is longer than the file; and what succeeds
// although the file was cut still has `whole` entries.
void ExpectHonestDamaged(const Bytes &good, size_t whole);

// Reads the bytes with no tree; the catalogue is empty again afterwards.
Reading ReadBytes(const Bytes &bytes);
