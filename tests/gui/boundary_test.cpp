#include "support.h"

#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/resource_file.h>
#include <wx_helpers1/text.h>

#include <filesystem>
#include <string>

namespace {

// A careless conversion answers one bad byte with an empty string, and the text is lost.
TEST(Boundary, AnyBytesComeBackAndAlwaysShow)
{
    for (const std::string bytes :
         {"\xf4\x80\x82\x80 private use", "\xed\xa0\x80 surrogate, \xf5\x80\x80\x80", "\xff"}) {
        EXPECT_EQ(bytes, wx_helpers1::from_wx(wx_helpers1::to_wx(bytes)));
        EXPECT_EQ(bytes, wx_helpers1::from_wx_locale(wx_helpers1::to_wx_locale(bytes)));
        EXPECT_FALSE(wx_helpers1::to_label(bytes).empty());
    }
    EXPECT_EQ(wxString::FromUTF8("caf\xef\xbf\xbd x"), wx_helpers1::to_label("caf\xe9 x"));
    EXPECT_EQ(wxString::FromUTF8("a\u2013\xef\xbf\xbdgpj.exe"),
              wx_helpers1::to_label("a\u2013\u202Egpj.exe"));
    EXPECT_EQ(wxString::FromUTF8("a\xef\xbf\xbd b"), wx_helpers1::to_label(std::string("a\0 b", 4)));
    EXPECT_EQ("R&&D", wx_helpers1::to_plain_label("R&D"));
}

TEST(Boundary, ArchiveMembersAreReadFromAnyPath)
{
    const test::temp_dir_t dir;
    const std::string odd = dir.path() + "/a#zip:b %20 \xe9";
    std::filesystem::create_directory(odd);
    const std::string archive = odd + "/commondlg3.dat";
    std::filesystem::copy_file(std::string(RESOURCE_DIR) + "/commondlg3.dat", archive);
    std::string bytes;
    EXPECT_TRUE(wx_helpers1::read_resource(archive + "#zip:commondlg.xrc", bytes));
    EXPECT_NE(std::string::npos, bytes.find("panel.error_warning"));
    EXPECT_FALSE(wx_helpers1::read_resource(archive + "#zip:other.xrc", bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_FALSE(wx_helpers1::read_resource(odd + "/none.dat#zip:commondlg.xrc", bytes));
}

} // namespace
