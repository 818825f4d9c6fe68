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

// Reads a file wherever it is cut, and with each byte wild, and tells what comes of it. Expects
// that a reading that succeeds has noted no failure, one that fails has, and no entry is longer
// than the file.
std::vector<std::string> TellDamagedFile(const Bytes &good);

// Reads the bytes with no tree; the catalogue is empty again afterwards.
Reading ReadBytes(const Bytes &bytes);
