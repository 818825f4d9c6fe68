#include "platform/page_text.h"

#include "platform/win32.h"

std::string UnitsToUtf8(const uint8_t *units, size_t count)
{
    std::basic_string<WCHAR> wide(count, 0);
    for (size_t i = 0; i < count; ++i)
        wide[i] = static_cast<WCHAR>(units[2 * i] | units[2 * i + 1] << 8);
    std::string utf8(count * 3, 0); // the most that a unit takes
    const int length =
        count == 0
            ? 0
            : WideCharToMultiByte(CP_UTF8, 0, wide.data(), static_cast<int>(count), utf8.data(),
                                  static_cast<int>(utf8.size()), nullptr, nullptr);
    utf8.resize(static_cast<size_t>(length));
    return utf8;
}
