#include "support.h"

#include <commondlg3/text_utils.h>

#include <string>

namespace {

using commondlg3::translate_message;

TEST(Texts, ComeFromTheCatalogWithTheProductsNamesOnlyWhenNothingIsGiven)
{
    EXPECT_EQ("Vorbex – Error", translate_message("message_window.title.error"));
    EXPECT_EQ(std::string::npos,
              translate_message("message_window.title.error", {{"field_name", "x"}}).find("Vorbex"))
        << "a list that is not empty stays as it was given";
    EXPECT_EQ("Message is not found: 'no.key'", translate_message("no.key"));
    EXPECT_EQ("Message is not found: ''", translate_message(""));
    const test::product_guard_t elsewhere(RESOURCE_DIR, "/nowhere");
    EXPECT_EQ("Message catalog 'commondlg' is not loaded. Message: btn.ok", translate_message("btn.ok"));
}

} // namespace
