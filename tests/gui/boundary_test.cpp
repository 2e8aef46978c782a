#include "support.h"

#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/resource_file.h>
#include <wx_helpers1/text.h>

#include <gen_helpers2/file.h>
#include <gen_helpers2/strings.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <random>
#include <string>

namespace {

std::string random_bytes(std::mt19937& random)
{
    std::string bytes(random() % 40, '\0');
    for (char& c : bytes)
        c = static_cast<char>(1 + random() % 255);
    return bytes;
}

// A careless conversion answers one bad byte with an empty string, and the text is lost.
TEST(Boundary, AnyBytesComeBackAndAlwaysShow)
{
    std::mt19937 random(7);
    for (int i = 0; i < 5000; ++i) {
        const std::string bytes = i == 0   ? "\xf4\x80\x82\x80 private use"
                                  : i == 1 ? "\xed\xa0\x80 surrogate, beyond the last \xf5\x80\x80\x80"
                                           : random_bytes(random);
        const wxString text = wx_helpers1::to_wx(bytes);
        ASSERT_TRUE(gen_helpers2::is_valid_utf8(text.utf8_string())) << bytes;
        ASSERT_EQ(bytes, wx_helpers1::from_wx(text));
        ASSERT_EQ(bytes, wx_helpers1::from_wx_locale(wx_helpers1::to_wx_locale(bytes)));
        ASSERT_EQ(bytes.empty(), wx_helpers1::to_label(bytes).empty());
    }
    EXPECT_EQ(wxString::FromUTF8("caf\xef\xbf\xbd x"), wx_helpers1::to_label("caf\xe9 x"));
    EXPECT_EQ(wxString::FromUTF8("a\u2013\xef\xbf\xbdgpj.exe"),
              wx_helpers1::to_label("a\u2013\u202Egpj.exe"));
    EXPECT_EQ(wxString::FromUTF8("a\xef\xbf\xbd b"), wx_helpers1::to_label(std::string("a\0 b", 4)));
    EXPECT_EQ("R&&D", wx_helpers1::to_plain_label("R&D"));
}

TEST(Boundary, ArchiveMembersAreReadFromAnyPathAndDamageIsRefused)
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

    std::string content;
    ASSERT_TRUE(gen_helpers2::read_whole_file(gen_helpers2::path_t(archive), content).succeeded());
    for (const std::size_t kept : {std::size_t(0), std::size_t(10), content.size() / 3}) {
        std::ofstream(archive, std::ios::binary | std::ios::trunc)
            .write(content.data(), static_cast<long>(kept));
        std::map<std::string, std::string> members = {{"before", "kept"}};
        EXPECT_FALSE(wx_helpers1::read_archive(archive, members)) << kept;
        EXPECT_EQ("kept", members["before"]);
    }
}

} // namespace
