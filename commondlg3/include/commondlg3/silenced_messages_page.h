#pragma once

#include "commondlg3/preferences_page.h"
#include "commondlg3/settings_file.h"
#include "commondlg3/silenced_messages_pp.h"

#include <wx/weakref.h>

#include <string>
#include <vector>

namespace commondlg3 {

/// The page of a preferences_frame_t on which users find the messages that they have silenced, and bring them
/// back.
///
///     const auto file = std::make_shared<settings_file_t>("preferences.xml");
///     silenced_messages_t(file->get()).ask("collect.overwrite", question, this);
///     ...
///     frame.add_page(std::make_shared<silenced_messages_page_t>(file));
///
/// Its settings are the names of the messages that are silenced. They are neither exported, as what somebody
/// does not want to see is nobody else's affair, nor imported: messages are silenced where they are shown.
/// GUI thread, as preferences_page_t says.
/// @since 3.1
class COMMONDLG3_EXPORT silenced_messages_page_t : public preferences_page_t
{
public:
    /// @param file that silenced_messages_t keeps them in
    explicit silenced_messages_page_t(settings_file_ptr_t file);
    ~silenced_messages_page_t() override;

    std::string get_name() const override;
    std::string get_title() const override;
    gen_helpers2::error_code_t load() override;
    gen_helpers2::error_code_t save() override;
    std::vector<gen_helpers2::path_t> get_files() const override;
    pref_base_t* create(wxWindow* parent) override;
    void show_kept() override;
    bool is_changed() const override;
    void store() override;
    gen_helpers2::variant_bag_t get_settings() const override;
    void set_settings(const gen_helpers2::variant_bag_t& settings) override;
    bool is_exported() const override { return false; }
    gen_helpers2::variant_bag_t get_defaults() const override { return {}; }

private:
    settings_file_ptr_t m_file;
    wxWeakRef<silenced_messages_pp_t> m_page;
};

} // namespace commondlg3
