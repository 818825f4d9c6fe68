// Paths in UTF-8, as commands are given them, and as the C++ library takes them apart.
#pragma once

#include <filesystem>
#include <string>

std::filesystem::path PathOf(const std::string &utf8);
std::string Utf8Of(const std::filesystem::path &path);
