#pragma once

#include "commondlg3/export.h"

#include <cfgmgr2/product_locations.h>
#include <gen_helpers2/log.h>

#include <wx/app.h>

#include <memory>
#include <string>

namespace commondlg3 {

/// The application of a product: what each would have to do before its first window and after its last.
///
///     class app_t : public commondlg3::product_app_t
///     {
///     public:
///         app_t() : product_app_t("Vorbex Performance Studio", "Vorbex") {}
///         bool OnInit() override { return product_app_t::OnInit() && (new main_window_t)->Show(); }
///     };
///     wxIMPLEMENT_APP(app_t);
///
/// It tells the library what the product is called and where it has its files, takes the language and the
/// direction of the user's environment, and starts the tasks for the GUI thread and the settings of the look.
/// At the end it waits until all is written that was to be written in the background. What the toolkit takes
/// for a mistake in the program goes to the log, where the toolkit would ask the user about it.
///
/// The command line is the product's: OnInit() does not read it; wxApp::OnInit() has the toolkit do so.
///
/// Not for a product that has an application of another kind: that one does the same by hand. GUI thread.
/// @since 3.1
class COMMONDLG3_EXPORT product_app_t : public wxApp
{
public:
    /// @param short_name stands in the titles of messages, and names the folder of the settings below the
    /// user's where no other is given. Empty: the name
    explicit product_app_t(const std::string& name, const std::string& short_name = {});
    ~product_app_t() override;

    /// Where the product has its files; to be changed before OnInit(). Folders that are left empty are found
    /// beside the program or, where it has none, beside the library.
    cfgmgr2::product_locations_t& get_product() { return *m_product; }

    bool OnInit() override;
    int OnExit() override;
    /// That of the language that is set: the toolkit gives it to each window as it is made.
    wxLayoutDirection GetLayoutDirection() const override;
    void OnAssertFailure(const wxChar* file, int line, const wxChar* function, const wxChar* condition,
                         const wxChar* message) override;

private:
    gen_helpers2::log_lifetime_t m_log;
    std::shared_ptr<cfgmgr2::product_locations_t> m_product;
};

} // namespace commondlg3
