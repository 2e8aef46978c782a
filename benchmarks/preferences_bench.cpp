// How fast the preferences are with very many pages: to open, to search, and to write all of them.
//
// usage: preferences_bench [PAGES]
//
// Each page holds 20 labels of five words and 20 fields. Each line gives the median, the 99th of a hundred,
// and the longest of the operations, in milliseconds: of a key up to the last of its painting.
#include "app.h"
#include "measured.h"

#include <commondlg3/form_page.h>
#include <commondlg3/preferences_frame.h>
#include <commondlg3/resources.h>

#include <wx/button.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

using bench::measured_t;
using gen_helpers2::variant_bag_t;

constexpr int fields_of_page = 20;

class many_t : public commondlg3::preferences_page_t
{
public:
    many_t(commondlg3::settings_file_ptr_t file, int number) : m_file(std::move(file)), m_number(number) {}
    std::string get_name() const override { return "page" + std::to_string(m_number); }
    std::string get_title() const override { return "Page " + std::to_string(m_number); }
    gen_helpers2::error_code_t load() override { return m_file->load(); }
    gen_helpers2::error_code_t save() override { return m_file->save(); }
    std::vector<gen_helpers2::path_t> get_files() const override { return {m_file->get_path()}; }
    commondlg3::pref_base_t* create(wxWindow* parent) override
    {
        auto* page = new commondlg3::pref_base_t;
        page->Create(parent, wxID_ANY);
        auto* sizer = new wxBoxSizer(wxVERTICAL);
        for (int i = 0; i < fields_of_page; ++i) {
            sizer->Add(new wxStaticText(page, wxID_ANY,
                                        "Setting " + std::to_string(m_number * 100 + i) + " of these pages"));
            m_fields.push_back(new wxTextCtrl(page, wxID_ANY, "usual"));
            sizer->Add(m_fields.back());
        }
        page->SetSizer(sizer);
        return page;
    }
    void show_kept() override {}
    bool is_changed() const override
    {
        for (const wxTextCtrl* field : m_fields)
            if (field->GetValue() != m_kept)
                return true;
        return false;
    }
    void store() override
    {
        const auto kept = m_file->get()->get_child(get_name());
        for (std::size_t i = 0; i < m_fields.size(); ++i)
            kept->set_value(std::to_string(i), m_fields[i]->GetValue().utf8_string());
    }
    void stored() override { m_kept = m_fields.front()->GetValue(); }
    variant_bag_t get_settings() const override { return {}; }
    void set_settings(const variant_bag_t&) override {}
    variant_bag_t get_defaults() const override { return {}; }
    void enter(const wxString& text)
    {
        for (wxTextCtrl* field : m_fields)
            field->ChangeValue(text);
    }

private:
    commondlg3::settings_file_ptr_t m_file;
    int m_number;
    wxString m_kept = "usual";
    std::vector<wxTextCtrl*> m_fields;
};

int measure(wxFrame* parent, int count)
{
    const std::string folder = std::filesystem::temp_directory_path() / "preferences_bench";
    std::filesystem::remove_all(folder);
    commondlg3::preferences_frame_t frame;
    frame.set_settings_folder(gen_helpers2::path_t(folder));
    std::vector<std::shared_ptr<many_t>> pages;
    for (int i = 0; i < count; ++i) {
        // Five files, as pages share them.
        static std::vector<commondlg3::settings_file_ptr_t> files(5);
        auto& file = files[i % 5];
        if (!file)
            file =
                std::make_shared<commondlg3::settings_file_t>(folder + "/" + std::to_string(i % 5) + ".xml");
        pages.push_back(std::make_shared<many_t>(file, i));
        frame.add_page(pages.back());
    }
    measured_t open("open the first of the pages", bench::wall_ms);
    open.run([&] {
        frame.show_nonmodal(parent, true);
        bench::wait_until_quiet(20);
    });
    auto* search = commondlg3::from_xrc<wxSearchCtrl>(&frame, "m_search");
    search->SetFocus();
    bench::wait_until_quiet(200); // the pages are made
    {
        measured_t key("a key of a search", bench::cpu_ms);
        const std::string words = "setting 310 pages";
        for (int round = 0; round < 6; ++round)
            for (std::size_t i = 1; i <= words.size(); ++i)
                key.run([&] {
                    search->SetValue(words.substr(0, i));
                    bench::wait_until_quiet(20);
                });
        search->SetValue(wxEmptyString);
    }
    measured_t apply("write all pages", bench::wall_ms);
    auto* button = commondlg3::from_xrc<wxButton>(&frame, "m_btn_apply");
    for (int round = 0; round < 10; ++round) {
        for (const auto& page : pages)
            page->enter("round " + std::to_string(round));
        apply.run([&] {
            wxCommandEvent event(wxEVT_BUTTON, button->GetId());
            button->GetEventHandler()->ProcessEvent(event);
        });
    }
    std::filesystem::remove_all(folder);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const int count = argc > 1 ? std::atoi(argv[1]) : 50;
    return bench::run_in_app(argc, argv, [count](wxFrame* frame) { return measure(frame, count); });
}
