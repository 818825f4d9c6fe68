// The names of the files that resources are saved under, as UTF-8.
#pragma once

#include <map>
#include <set>
#include <string>

// A resource's name as a file name can hold it on Windows and on Linux: control characters and
// those that separate paths or are reserved, and the first letter of a device's name, are written
// %XX.
std::string EncodeFileName(const std::string &name);

// The same for a name that may be anything and may name a folder: also dots and blanks at its
// beginning and its end are written %XX; "unnamed" for none.
std::string EncodeAnyName(const std::string &name);

// A word of ASCII letters and digits that is not to be taken for another name: its first letter is
// written %XX.
std::string EncodeMarked(const std::string &word);

// The names given in one folder so far, letters folded.
struct NamesInFolder {
    std::set<std::string> taken;
    std::map<std::string, int> lastNumber; // of the names that met already
};

// The file name for a resource: the encoded name with the extension (".BMP"), told apart from
// those given before by " (2)", " (3)" and so on, and shortened to what a file system takes with
// number and extension kept. A folder has none (""); shortened, it does not end with dots or
// blanks.
std::string NextFileName(NamesInFolder *folder, const std::string &encoded,
                         const std::string &extension);
