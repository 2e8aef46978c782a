#pragma once

#include "commondlg3/export.h"
#include "commondlg3/pref_base.h"

#include <gen_helpers2/error_code.h>
#include <gen_helpers2/path.h>
#include <gen_helpers2/signal.h>
#include <gen_helpers2/variant_bag.h>
#include <wx_helpers1/picture.h>

#include <memory>
#include <string>
#include <vector>

namespace commondlg3 {

/// One page of a preferences_frame_t: a page of controls, and the place where its settings are kept.
///
/// For a page whose controls each hold one value derive from form_page_t, which does the rest. Derive from
/// this for pages that are more than that:
///
///     class editors_t : public preferences_page_t
///     {
///     public:
///         std::string get_name() const override { return "editors"; }
///         std::string get_title() const override { return text("preferences.editors"); }
///         gen_helpers2::error_code_t load() override { return m_file->load(); }
///         pref_base_t* create(wxWindow* parent) override { ... }
///         ...
///     };
///
/// The frame calls load(), then create() once somebody looks at the page or searches it. OK and Apply call
/// validate() and store() of each page that was changed, then save() of them all, and stored().
///
/// Settings are handed over as a bag in which each value or child of the first level is one setting, by
/// name: with them the frame knows what was changed, restores, exports and imports.
///
/// Ownership: shared between the frame and the thread that reads and writes, which may outlive it where a
/// disk hangs. Threads: load(), save() and get_files() run on a thread of their own while the frame waits
/// and calls nothing else; they must touch no window. The rest is for the GUI thread.
/// @since 3.1
class COMMONDLG3_EXPORT preferences_page_t
{
public:
    preferences_page_t() = default;
    virtual ~preferences_page_t() = default;
    preferences_page_t(const preferences_page_t&) = delete;
    preferences_page_t& operator=(const preferences_page_t&) = delete;

    // What is shown of the page in the list of pages; texts are translated.

    /// By it the page is remembered, and its settings are found in a file that was exported: it never
    /// changes.
    virtual std::string get_name() const = 0;
    virtual std::string get_title() const = 0;
    /// The heading that the page stands below; pages of one group are added one after the other. Empty:
    /// none.
    virtual std::string get_group() const { return {}; }
    /// Of the size of a line of text; empty: none.
    virtual wx_helpers1::wxStaticPicture get_icon() const { return {}; }
    /// More words, beside the title and what stands on the page, by which it is found.
    virtual std::string get_search_words() const { return {}; }
    /// What preferences_frame_t's help signal says when help is asked for on this page; empty: it has none.
    virtual std::string get_help_topic() const { return {}; }

    // Where the settings are kept.

    /// Reads what is kept. On an error the page will show what the product begins with. May be called again,
    /// when somebody else has written the files: then it must look whether it has to read them anew.
    virtual gen_helpers2::error_code_t load() = 0;
    /// Writes what store() has taken. Within a gen_helpers2::file_transaction_t: whole files only.
    virtual gen_helpers2::error_code_t save() = 0;
    /// The files behind it, also before load(), so that it is noticed when another program writes them.
    virtual std::vector<gen_helpers2::path_t> get_files() const { return {}; }

    // The page itself.

    /// Makes the page below the parent, which owns it, with the settings that are kept.
    virtual pref_base_t* create(wxWindow* parent) = 0;
    /// Shows what is kept, as create() does, in place of what the page holds: load() has read it anew.
    virtual void show_kept() = 0;
    /// Whether the page holds something else than what is kept. Always false before create().
    virtual bool is_changed() const = 0;
    /// For pages whose changes no event of a control tells, as those of a list that is edited in place:
    /// raised by the page when is_changed() may answer otherwise than before.
    gen_helpers2::signal_t<>& get_changed_signal() { return m_changed_signal; }

    /// What must be set right before anything is written.
    struct problem_t
    {
        std::string message;         ///< empty: there is none
        wxWindow* control = nullptr; ///< that gets the focus; may be null
    };
    /// Asked before anything is written; here all is right.
    virtual problem_t validate() { return {}; }
    /// Takes what the page holds, for save() to write. May replace what cannot be used, and say so.
    virtual void store() = 0;
    /// What store() has taken is on the disk.
    virtual void stored() {}
    /// After stored(): whether the user, asked for it, wants it to take effect by a restart now.
    virtual bool prompt_restart() { return false; }

    // The settings, by name.

    /// What the page holds, or before create() what is kept.
    virtual gen_helpers2::variant_bag_t get_settings() const = 0;
    /// Puts settings onto the page, which is there. They may come from anywhere: what cannot be is left out,
    /// as are names that are not known; a name that is missing leaves its setting alone.
    virtual void set_settings(const gen_helpers2::variant_bag_t& settings) = 0;
    /// Whether the settings go into a file for others, and come from one. Not what is the user's own affair.
    virtual bool is_exported() const { return true; }
    /// What the product begins with; empty where nothing is restored.
    virtual gen_helpers2::variant_bag_t get_defaults() const = 0;

    /// A setting, and the control that it is set with.
    struct setting_t
    {
        std::string name;
        wxWindow* control;
        std::string title; ///< empty: what the control or the label before it says
    };
    /// In the order of the page. Settings without a control of their own may be missing.
    virtual std::vector<setting_t> get_setting_controls() const { return {}; }

private:
    gen_helpers2::signal_t<> m_changed_signal;
};

using preferences_page_ptr_t = std::shared_ptr<preferences_page_t>;

} // namespace commondlg3
