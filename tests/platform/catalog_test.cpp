#include "cfgmgr2/message_catalog.h"
#include "cfgmgr2/product_locations.h"
#include "cpil/catalog.h"
#include "cpil/mo_catalog.h"
#include "gen_helpers2/stdpaths.h"
#include "test_tools.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace {

using CPIL_2_18::generic::varg_list;
using CPIL_2_18::i18n::catalog_key;
using CPIL_2_18::i18n::make_catalog;
using CPIL_2_18::i18n::read_mo_catalog;

std::string shown(const std::string& pattern, const varg_list& args, const std::string& language = "en")
{
    return make_catalog("test", language, {{"key", pattern}})->message("key").as_ustring(args);
}

TEST(Message, IsMadeByTheRulesOfItsLanguage)
{
    const varg_list args{{"a", "x"},   {"b", std::string("{a}")}, {"n", 1234567}, {"r", 0.5}, {"one", 1},
                         {"three", 3}, {"bytes", "\xFF"}};
    const std::string files = ", plural, one {# file} other {# files}} in {a}";
    const std::string arabic = "{three, plural, zero {z} one {o} two {t} few {f} many {m} other {x}}";
    const struct
    {
        std::string language, pattern, message;
    } cases[] = {{"en", "{a} and {b}", "x and {a}"},
                 {"en", "{n} {r}", "1,234,567 0.5"},
                 {"de", "{n} {r}", "1.234.567 0,5"},
                 {"en", "{missing} {a}", "{missing} x"},
                 {"en", "{ a } {0}", "x {0}"},
                 {"en", "no {bytes}", "no \xFF"}, // the bytes of a file's name stay
                 {"en", "don't '{a}' it''s {a}", "don't {a} it's x"},
                 {"en", "'{it''s} {a}", "{it's} {a}"},
                 {"en", "a } b '", "a } b '"},
                 {"en", "{one" + files, "1 file in x"},
                 {"en", "{n" + files, "1,234,567 files in x"},
                 {"ar", arabic, "f"},
                 {"en", arabic, "x"}};
    for (const auto& c : cases)
        EXPECT_EQ(shown(c.pattern, args, c.language), c.message) << c.pattern;
    EXPECT_EQ(shown("{a}", varg_list()), "{a}");
}

// Without its marks a path would draw the full stop, or the next word, into its own direction.
TEST(Message, ArgumentsAgainstTheLanguagesDirectionAreIsolated)
{
    const std::string path = "/home/u/a.txt";
    const std::string arabic = "\u0645\u0644\u0641";
    const std::string isolated_path = "\u2068" + path + "\u2069";
    const auto in = [](const std::string& language, const std::string& pattern, const std::string& value) {
        return shown(pattern, {{"dir", value}, {"n", 2}}, language);
    };
    EXPECT_EQ(in("ar", "{dir}.", path), isolated_path + ".");
    EXPECT_EQ(in("ar", "{n, plural, other {{dir}.}}", path), isolated_path + ".") << "in plural forms too";
    EXPECT_EQ(in("ar", "{dir}.", arabic), arabic + ".");
    EXPECT_EQ(in("en", "{dir}.", arabic), "\u2068" + arabic + "\u2069.");
    EXPECT_EQ(in("en", "{dir}.", path + "\u00e9\u65e5"), path + "\u00e9\u65e5.");
    EXPECT_EQ(in("ar", "{dir}", "a\nb"), "a\nb") << "an isolate ends with its line";
    EXPECT_EQ(in("ar", "{dir}.", "\xff"), "\xff.");
    EXPECT_EQ(in("en", "{dir}.", "a\u202Egpj.exe"), "a\uFFFDgpj.exe.") << "an override would reach beyond it";
}

TEST(Message, WhatCannotBeFormattedIsShownRaw)
{
    for (const char* broken : {"{", "{a", "{a b}", "{n, plural, one {x}}", "{n, nonsense}", "{}", "'{' {"})
        EXPECT_EQ(shown(broken, {{"a", "x"}, {"n", 1}}), broken);
    std::string deep;
    for (int i = 0; i < 30000; ++i)
        deep += "{a,select,other{";
    EXPECT_EQ(shown(deep + std::string(60000, '}'), {{"a", "x"}}).substr(0, deep.size()), deep);
    EXPECT_EQ(shown("{n, plural, other {#}}", {{"n", "text"}}), "{n, plural, other {#}}");
    EXPECT_EQ(shown("{n, plural, other {#}} {a}", {{"a", "x"}}), "{n} x");
}

TEST(Catalog, MissingAndEmptyMessagesAreNone)
{
    static_assert(catalog_key("%Key")[0] == '%', "usable in constant tables");
    const auto german = make_catalog("test", "de", {{"both", "beide"}, {"empty", ""}, {"", "header"}});
    german->set_fallback(
        make_catalog("test", "en", {{"both", "both"}, {"only", "{n, plural, one {o} other {x}}"}}));
    EXPECT_EQ(german->message("both").raw(), "beide");
    EXPECT_EQ(german->message("only").as_ustring({{"n", 1}}), "o");
    for (const char* key : {"none", "empty", ""}) {
        EXPECT_FALSE(german->has_message(key)) << key;
        EXPECT_EQ(german->message(key).as_ustring(), "") << key;
    }
}

TEST(MoCatalog, ReadsBothByteOrdersInAnyLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    for (const char* locale : {"C", "C.UTF-8"}) {
        std::setlocale(LC_ALL, locale);
        for (const bool big_endian : {false, true}) {
            const auto catalog =
                read_mo_catalog(test_tools::make_mo({{"k", "\xC3\xA4 {a}"}}, big_endian), "d", "de");
            ASSERT_TRUE(catalog);
            EXPECT_EQ(catalog->message("k").as_ustring({{"a", "x"}}), "\xC3\xA4 x");
            EXPECT_FALSE(catalog->has_message("other"));
        }
    }
    std::setlocale(LC_ALL, before.c_str());
}

TEST(MoCatalog, DamagedFilesDoNoHarm)
{
    const std::string good = test_tools::make_mo({{"key", "text"}, {"other", "text {a}"}});
    for (std::size_t length = 0; length < good.size(); ++length)
        EXPECT_FALSE(read_mo_catalog(good.substr(0, length), "d", "en")) << length;
    // A rule for plurals that nests too deeply for any parser.
    const std::string rule = "Content-Type: text/plain; charset=UTF-8\nPlural-Forms: nplurals=1; plural=";
    EXPECT_FALSE(
        read_mo_catalog(test_tools::make_mo({{"", rule + std::string(100000, '(') + "0"}}), "d", "en"));
}

class MessageCatalog : public testing::Test
{
protected:
    void SetUp() override
    {
        auto where = std::make_shared<cfgmgr2::product_locations_t>();
        where->locale_directory = m_dir.path();
        cfgmgr2::IProductLocations::set(where);
    }
    void TearDown() override
    {
        cfgmgr2::set_language("en");
        cfgmgr2::IProductLocations::set(nullptr);
    }
    void install(const std::string& language, const std::map<std::string, std::string>& messages)
    {
        const auto folder = m_dir.path() / language / "LC_MESSAGES";
        std::filesystem::create_directories(folder.as_filesystem_path());
        test_tools::write_text(folder / "dialogs.mo", test_tools::make_mo(messages));
    }
    static std::string text(const char* key)
    {
        const auto catalog = cfgmgr2::getMessageCatalog("dialogs");
        return catalog ? catalog->message(key).as_ustring() : "(no catalog)";
    }

    test_tools::temp_dir_t m_dir;
};

TEST_F(MessageCatalog, FallsBackToBaseLanguageAndEnglish)
{
    install("en", {{"a", "en a"}, {"b", "en b"}});
    install("pt", {{"a", "pt a"}});
    cfgmgr2::set_language("pt_BR.UTF-8");
    EXPECT_EQ(cfgmgr2::get_language(), "pt_BR");
    EXPECT_EQ(text("a"), "pt a");
    EXPECT_EQ(text("b"), "en b");
    cfgmgr2::set_language("ja");
    EXPECT_EQ(text("a"), "en a");
    EXPECT_FALSE(cfgmgr2::getMessageCatalog("../dialogs"));
    EXPECT_FALSE(cfgmgr2::getMessageCatalog(""));
}

TEST_F(MessageCatalog, LanguagesAreThoseWhoseFilesAreThere)
{
    EXPECT_EQ(cfgmgr2::get_catalog_languages("dialogs"), std::vector<std::string>());
    install("pt_BR", {{"language.name", "Português"}});
    install("en", {{"language.name", "English"}});
    install("no language", {});
    EXPECT_EQ(cfgmgr2::get_catalog_languages("dialogs"), (std::vector<std::string>{"en", "pt_BR"}));
    EXPECT_EQ(cfgmgr2::get_catalog_languages("another"), std::vector<std::string>());
    EXPECT_EQ(cfgmgr2::getMessageCatalog("dialogs", "pt_BR")->message("language.name").as_ustring(),
              "Português");
    EXPECT_EQ(text("language.name"), "English") << "the language set stays";
    EXPECT_FALSE(cfgmgr2::getMessageCatalog("dialogs", "../en"));
}

TEST_F(MessageCatalog, MissingCatalogIsLookedForAgain)
{
    EXPECT_EQ(text("a"), "(no catalog)");
    install("en", {{"a", "first"}});
    EXPECT_EQ(text("a"), "first");
    const auto kept = cfgmgr2::getMessageCatalog("dialogs");
    install("en", {{"a", "second"}});
    EXPECT_EQ(text("a"), "first");
    cfgmgr2::reset_message_catalogs();
    EXPECT_EQ(text("a"), "second");
    EXPECT_EQ(kept->message("a").as_ustring(), "first");
}

TEST_F(MessageCatalog, NamesOfLanguages)
{
    for (const char* wrong : {"", "C", "POSIX", "../etc", "de/", "d", "de_", "DE", "deutsch"}) {
        cfgmgr2::set_language(wrong);
        EXPECT_EQ(test_tools::take_assertions().size(), 1U) << wrong;
        EXPECT_EQ(cfgmgr2::get_language(), "en");
    }
    ::setenv("LANGUAGE", "", 1);
    ::setenv("LC_ALL", "C", 1);
    ::setenv("LC_MESSAGES", "de_DE.UTF-8@euro", 1);
    EXPECT_EQ(cfgmgr2::language_from_environment(), "de_DE");
    ::setenv("LANGUAGE", "ja:en", 1);
    EXPECT_EQ(cfgmgr2::language_from_environment(), "ja");
    for (const char* variable : {"LANGUAGE", "LC_ALL", "LC_MESSAGES"})
        ::unsetenv(variable);
    EXPECT_TRUE(cfgmgr2::language_is_right_to_left("he_IL"));
    EXPECT_FALSE(cfgmgr2::language_is_right_to_left("ja"));
}

using MessageCatalogThreads = MessageCatalog;

TEST_F(MessageCatalogThreads, LanguageChangesWhileTextsAreRead)
{
    install("en", {{"a", "{n, plural, one {# x} other {# en}}"}});
    install("de", {{"a", "{n, plural, one {# x} other {# de}}"}});
    std::vector<std::thread> readers;
    for (int t = 0; t < 3; ++t)
        readers.emplace_back([] {
            for (int i = 0; i < 700; ++i) {
                const auto catalog = cfgmgr2::getMessageCatalog("dialogs");
                const std::string seen = catalog->message("a").as_ustring({{"n", 2}});
                EXPECT_TRUE(seen == "2 en" || seen == "2 de") << seen;
            }
        });
    for (int i = 0; i < 200; ++i) {
        cfgmgr2::set_language(i % 2 ? "en" : "de");
        if (i % 20 == 0)
            cfgmgr2::reset_message_catalogs();
    }
    for (auto& reader : readers)
        reader.join();
}

TEST(ProductLocations, StandBesideTheProgramUntilTheHostSaysOtherwise)
{
    cfgmgr2::IProductLocations* const initial = cfgmgr2::IProductLocations::get();
    EXPECT_EQ(initial->get_resource_directory().file_name(), "commondlg3");
    EXPECT_EQ(initial->get_resource_directory().parent(), initial->get_locale_directory().parent());
    auto own = std::make_shared<cfgmgr2::product_locations_t>();
    const auto config = gen_helpers2::stdpaths::get_user_config_dir();
    for (const char* name : {"product", "../../etc", "..", "/"}) {
        own->product_short_name = name;
        EXPECT_EQ(own->get_config_directory().parent(), config) << name;
    }
    cfgmgr2::IProductLocations::set(own);
    cfgmgr2::IProductLocations::set(nullptr);
    EXPECT_EQ(cfgmgr2::IProductLocations::get(), initial);
}

} // namespace
