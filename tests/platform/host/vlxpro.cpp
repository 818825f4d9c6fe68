#include "content/dib.h"
#include "platform/win32.h"

#include <gtest/gtest.h>

#include <string>

// The strip of the About box is 58 x 226 dialog units: 87 x 367 pixels where a unit of 8-point
// MS Sans Serif is 6 / 4 by 13 / 8 pixels.
TEST(HostModule, HasThePictureOfTheAboutBoxAndTheMessageDialog)
{
    HMODULE host = LoadLibraryA(BUILD_FOLDER "/VLXPRO.EXE");
    ASSERT_NE(host, nullptr);
    HRSRC found = FindResourceA(host, MAKEINTRESOURCEA(9004), RT_BITMAP);
    ASSERT_NE(found, nullptr);
    DibHeader header;
    ASSERT_TRUE(ReadDibHeader(LockResource(LoadResource(host, found)), SizeofResource(host, found),
                              &header));
    EXPECT_EQ(header.width, 87);
    EXPECT_EQ(header.height, 367);

    found = FindResourceA(host, "MessageBox", MAKEINTRESOURCEA(5));
    ASSERT_NE(found, nullptr);
    const char *bytes = (const char *)LockResource(LoadResource(host, found));
    std::u16string words(SizeofResource(host, found) / 2, 0);
    memcpy(words.data(), bytes, words.size() * 2);
    // a control's id stands before its class: 0x82 is a static text, 0x80 a button
    EXPECT_NE(words.find(u"\x0065\xffff\x0082"), std::u16string::npos);
    EXPECT_NE(words.find(u"\x0001\xffff\x0080"
                         u"OK"),
              std::u16string::npos);
    EXPECT_TRUE(FreeLibrary(host));
}
