#include "platform/page_text.h"

#include "platform/win32.h"

#include <vector>

bool KnowsCodePage(unsigned page)
{
    return page == 0 || IsValidCodePage(page);
}

std::string PageTextToUtf8(unsigned page, const char *text, size_t length)
{
    std::vector<uint8_t> units;
    std::vector<WCHAR> wide(length);
    const int count = length == 0 ? 0
                                  : MultiByteToWideChar(page, 0, text, static_cast<int>(length),
                                                        wide.data(), static_cast<int>(length));
    for (int i = 0; i < count; ++i) {
        units.push_back(static_cast<uint8_t>(wide[static_cast<size_t>(i)] & 0xFF));
        units.push_back(static_cast<uint8_t>(wide[static_cast<size_t>(i)] >> 8));
    }
    if (count > 0 || length == 0)
        return UnitsToUtf8(units.data(), static_cast<size_t>(count));
    std::string utf8;
    for (size_t i = 0; i < length; ++i)
        utf8 +=
            static_cast<unsigned char>(text[i]) < 0x80 ? std::string(1, text[i]) : "\xEF\xBF\xBD";
    return utf8;
}
