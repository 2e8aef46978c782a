#include "tools.h"

#include <commondlg3/experimental_options_panel.h>
#include <commondlg3/resources.h>
#include <gen_helpers2/variant_bag_file.h>

#include <wx/checkbox.h>
#include <wx/scrolwin.h>
#include <wx/srchctrl.h>

#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

namespace {

using commondlg3::active_features_config_impl_t;
using commondlg3::experimental_options_panel_t;
using commondlg3::feature_list_config_impl_t;
using gen_helpers2::path_t;
using gen_helpers2::variant_bag_t;

using feature_t = active_features_config_impl_t::feature_info_t;
using names_t = std::vector<std::string>;

void write_list(const std::string& folder, const std::vector<feature_t>& features)
{
    variant_bag_t bag;
    variant_bag_t& all = bag.add_child("features");
    for (const feature_t& feature : features) {
        variant_bag_t& each = all.add_child("feature");
        each.put("name", feature.name);
        each.put("description", feature.description);
        each.put("env_variable", feature.env_variable);
    }
    ASSERT_TRUE(gen_helpers2::save_variant_bag(bag, path_t(folder) / "evaluation_features.cfg").succeeded());
}

// What the file holds, read without the class that wrote it: "name=value" of every value of every feature.
names_t active_file(const std::string& folder)
{
    variant_bag_t bag;
    names_t found;
    if (gen_helpers2::load_variant_bag(path_t(folder) / "active_evaluation_features.cfg", bag).failed())
        return {"unreadable"};
    for (const auto& item : *bag.find_child("features"))
        for (const auto& value : *item.child())
            found.push_back(std::string(value.name()) + "=" + value.value().get<std::string>());
    return found;
}

TEST(Features, ListKeepsOrderAndToleratesWhatIsMissing)
{
    const test::temp_dir_t dir;
    const std::string file = dir.path() + "/evaluation_features.cfg";
    feature_list_config_impl_t list{path_t(dir.path())};
    test::make_file(file, "<bag version=\"1\"><child name=\"features\">"
                          "<child name=\"feature\"><string name=\"name\">b</string></child>"
                          "<child name=\"feature\"><int name=\"name\">5</int>"
                          "<string name=\"env_variable\">A\\xFF</string></child>"
                          "<string name=\"feature\">no child</string></child></bag>");
    list.load();
    list.load(); // anew, not once more
    ASSERT_EQ(2, list.get_count());
    EXPECT_EQ("b", list.get_feature(0).name);
    EXPECT_EQ("", list.get_feature(0).env_variable + list.get_feature(1).name);
    EXPECT_EQ("A\xFF", list.get_feature(1).env_variable);
    EXPECT_EQ("", list.get_feature(2).name + list.get_feature(-1).name);
}

TEST(Features, TextsOfTheListAreThoseOfTheProductsCatalogInTheLanguageSet)
{
    const test::temp_dir_t dir;
    write_list(dir.path(), {{"severity.error", "severity.warning", "A"}, {"Plain", "no.such.key", "B"}});
    commondlg3::translated_feature_list_t list(path_t(dir.path()), "commondlg");
    list.load();
    for (const auto& [language, name, description] :
         {std::tuple("de", "Fehler", "Warnung"), std::tuple("en", "Error", "Warning")}) {
        const test::language_guard_t guard(language);
        EXPECT_EQ(name, list.get_feature(0).name);
        EXPECT_EQ(description, list.get_feature(0).description);
        EXPECT_EQ("A", list.get_feature(0).env_variable);
        EXPECT_EQ("Plain", list.get_feature(1).name);
        EXPECT_EQ("no.such.key", list.get_feature(1).description);
    }
}

TEST(Features, ActiveOnesStandOnceInTheFileHoweverOftenTheyAreLoaded)
{
    const test::temp_dir_t dir;
    active_features_config_impl_t active{path_t(dir.path() + "/made/on/the/way")};
    active.turn_on({"", "", "B"});
    active.turn_on({"", "", "A"});
    active.turn_on({"", "", "B"});
    ASSERT_TRUE(active.save());
    active.load();
    active.load();
    ASSERT_TRUE(active.save());
    EXPECT_EQ((names_t{"env_variable=B", "env_variable=A"}), active_file(dir.path() + "/made/on/the/way"));
    test::make_file(active.get_config_filename(), "<bag");
    active.load(); // changes nothing
    EXPECT_TRUE(active.is_turned_on({"other", "texts", "A"}));
    ASSERT_TRUE(active.save());
    EXPECT_EQ("<bag", test::read_file(active.get_config_filename() + ".damaged"));
    EXPECT_EQ((names_t{"env_variable=B", "env_variable=A"}), active_file(dir.path() + "/made/on/the/way"));
}

class ExperimentalPage : public testing::Test
{
protected:
    ExperimentalPage()
        : m_list(new feature_list_config_impl_t(path_t(m_dir.path()))),
          m_active(new active_features_config_impl_t(path_t(m_dir.path())))
    {
    }
    ~ExperimentalPage() override
    {
        if (m_page)
            m_page->Destroy();
        test::settle();
    }

    void show(const std::vector<feature_t>& features, unsigned flags = 0)
    {
        write_list(m_dir.path(), features);
        m_list->load();
        m_page = new experimental_options_panel_t(m_list, m_active, flags);
        m_page->create(test::main_window());
        m_page->SetSize(test::main_window()->GetClientSize());
        test::settle();
    }
    std::vector<wxCheckBox*> boxes() const
    {
        std::vector<wxCheckBox*> found;
        auto* list = commondlg3::from_xrc<wxScrolledWindow>(m_page, "m_feature_list_wnd");
        for (wxWindow* child : list->GetChildren())
            if (auto* box = wxDynamicCast(child, wxCheckBox))
                found.push_back(box);
        return found;
    }
    bool tells_restart() const
    {
        return commondlg3::from_xrc<wxPanel>(m_page, "m_mesage_panel")->GetChildren().front()->IsShown();
    }

    const test::temp_dir_t m_dir;
    boost::shared_ptr<feature_list_config_impl_t> m_list;
    boost::shared_ptr<active_features_config_impl_t> m_active;
    experimental_options_panel_t* m_page = nullptr;
};

TEST_F(ExperimentalPage, WhatIsTickedByKeyboardIsWrittenAsAWhole)
{
    m_active->turn_on({"", "", "GONE"}); // in no list any more
    m_active->turn_on({"", "", "LAST"});
    ASSERT_TRUE(m_active->save());
    show({{"First & only", "what it does", "FIRST"},
          {"First & only", "what it does", "FIRST"},
          {"Last", "", "LAST"}});
    ASSERT_EQ(2U, boxes().size());
    EXPECT_EQ("First & only", boxes()[0]->GetLabelText());
    EXPECT_TRUE(boxes()[1]->GetValue());
    EXPECT_FALSE(m_page->is_changed() || tells_restart());
    boxes()[0]->SetFocus();
    test::press(WXK_SPACE);
    ASSERT_TRUE(test::wait_for([&] { return m_page->is_changed(); }));
    EXPECT_TRUE(tells_restart());
    test::press(WXK_SPACE);
    ASSERT_TRUE(test::wait_for([&] { return !m_page->is_changed(); }));
    EXPECT_FALSE(tells_restart() || m_page->is_restart_requested());
    test::press(WXK_SPACE);
    ASSERT_TRUE(test::wait_for([&] { return m_page->is_changed(); }));
    m_page->on_ok(); // the host's OK and the page's own saving are one
    EXPECT_TRUE(m_page->is_restart_requested() && tells_restart());
    EXPECT_FALSE(m_page->is_changed());
    EXPECT_EQ((names_t{"env_variable=FIRST", "env_variable=LAST"}), active_file(m_dir.path()));
}

TEST_F(ExperimentalPage, AFailedWriteLosesNothing)
{
    show({{"Feature", "", "FEATURE"}});
    std::filesystem::create_directory(m_active->get_config_filename());
    boxes()[0]->SetFocus();
    test::press(WXK_SPACE);
    ASSERT_TRUE(test::wait_for([&] { return m_page->is_changed(); }));
    EXPECT_FALSE(m_page->save_settings());
    EXPECT_TRUE(m_page->is_changed() && m_page->is_experimental_on());
    std::filesystem::remove(m_active->get_config_filename());
    EXPECT_TRUE(m_page->save_settings());
    EXPECT_EQ((names_t{"env_variable=FEATURE"}), active_file(m_dir.path()));
}

TEST_F(ExperimentalPage, NamesakesKeepTheirOwnStates)
{
    show({{"Same", "one", "ONE"}, {"Same", "two", "TWO"}});
    boxes()[1]->SetFocus();
    test::press(WXK_SPACE);
    ASSERT_TRUE(test::wait_for([&] { return m_page->is_changed(); }));
    EXPECT_FALSE(m_page->get_features()[0].enabled);
    EXPECT_TRUE(m_page->get_features()[1].enabled);
}

// What a search hides must neither be lost nor stay on when all are turned off.
TEST_F(ExperimentalPage, ManyAreFoundMarkedWhenChangedAndTurnedOff)
{
    std::vector<feature_t> features;
    for (int i = 1; i <= 11; ++i)
        features.push_back({"Feature " + std::to_string(i), i == 5 ? "Größe" : "", "V" + std::to_string(i)});
    m_active->turn_on({"", "", "V1"});
    show(features, 7);
    const auto shown = [&] {
        std::string names;
        for (const wxCheckBox* box : boxes())
            names += box->IsShown() ? box->GetLabelText().utf8_string() + " " : "";
        return names;
    };
    const auto count_changed = [&] {
        int count = 0;
        for (const wxWindow* child : boxes().front()->GetParent()->GetChildren())
            count += child->IsShown() && child->GetLabel().StartsWith("Changed since the last start");
        return count;
    };
    EXPECT_EQ(0, count_changed());
    auto* search = wxDynamicCast(m_page->FindWindow("searchCtrl"), wxSearchCtrl);
    ASSERT_TRUE(search);
    search->SetValue(wxString('x', 20000));
    EXPECT_EQ(1000u, search->GetValue().length()) << "each key takes the time of the whole text";
    search->SetValue(wxString::FromUTF8("GRÖ feature"));
    EXPECT_EQ("Feature 5 ", shown());
    boxes()[4]->SetValue(true);
    test::send(wxEVT_CHECKBOX, boxes()[4], 1);
    EXPECT_EQ(1, count_changed());
    EXPECT_TRUE(m_page->save_settings());
    EXPECT_EQ((names_t{"env_variable=V1", "env_variable=V5"}), active_file(m_dir.path()));
    EXPECT_EQ(1, count_changed()) << "saved, but not in effect";
    wxCommandEvent pressed;
    m_page->on_reset(pressed);
    search->SetValue("");
    EXPECT_EQ(1, count_changed()) << "the one that was on";
    EXPECT_FALSE(m_page->is_experimental_on());
    EXPECT_TRUE(m_page->save_settings());
    EXPECT_EQ(names_t(), active_file(m_dir.path()));
}

} // namespace
