#pragma once

#include "commondlg3/export.h"
#include "commondlg3/language_info.h"

#include <cfgmgr2/property_storage.h>
#include <gen_helpers2/generic_iterator.h>
#include <gen_helpers2/intrusive_pointer.h>
#include <gen_helpers2/system_editor.h>
#include <gen_helpers2/variant_bag.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace commondlg3 {

/// Which programs open source files: for each language a list of editors, the one that is chosen, and the one
/// that is the default. A value; editor_pp_t edits a copy of one.
///
///     editor_data_t editors;
///     editors.load_system_info();                 // what is registered with the desktop, and $VISUAL
///     editors.load_storage_info(preferences);     // then what was kept: what was found just now wins
///     ...
///     editors.save_storage_info(preferences);
///     error = preferences->save();
///
/// Editors come from the desktop ("system"), from the variables VISUAL and EDITOR (one, always there once the
/// system was asked), and from the user ("custom"). A name tells editors of a language apart, and is kept;
/// display names may be alike. `cpp`, `fortran` and `other` are supported; every operation takes another
/// language as one of which nothing is known, and answers false or nothing.
///
/// What is kept names languages by their localized names: settings written in one user-interface language
/// have their editors under `other` in a second one wherever the names differ. A caller's mistake is an
/// assertion of the unit `editor_data`, after which the item at fault is left out. GUI thread.
class COMMONDLG3_EXPORT editor_data_t
{
public:
    using language_t = language_info::language_t;
    using system_editor_t = gen_helpers2::system_editor_t;
    using editors_t = gen_helpers2::generic_iterator_t<system_editor_t>;
    using storage_t = gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage>;
    using names_t = std::map<language_t, std::string>;

    /// The name of the editor that comes from the environment.
    static constexpr char env_var_editor_name[] = "vorbex_env_var_editor_name";

    /// One editor of one language.
    struct COMMONDLG3_EXPORT editor_t
    {
        editor_t() = default;
        /// One of which nothing but its name is known.
        explicit editor_t(const std::string& name);
        /// A custom one.
        editor_t(const system_editor_t& editor);
        operator system_editor_t() const;

        std::string name;
        std::string display_name;
        std::string executable;   ///< what is started; not quoted
        std::string command_line; ///< the executable, then arguments as a shell would read them
        bool is_system = false;   ///< registered with the desktop

        friend bool operator==(const editor_t& a, const editor_t& b)
        {
            return a.is_system == b.is_system && system_editor_t(a) == system_editor_t(b);
        }
    };
    using editor_key_t = std::pair<language_t, std::string>;
    using records_t = std::map<editor_key_t, editor_t>;

    /// Where an editor comes from.
    enum editor_type_t : int
    {
        editor_type_none = 0,
        editor_type_system = 1,
        editor_type_env_var = 2,
        editor_type_custom = 3
    };

    /// Without any editor; `cpp` is selected.
    editor_data_t();

    gen_helpers2::generic_iterator_t<language_t> get_languages() const;
    /// Whether there is a list of editors for the language.
    static bool is_supported_language(language_t language);

    /// The language that was shown last.
    bool set_selected_language(language_t language);
    language_t get_selected_language() const { return m_selected_language; }

    // The list of a language. What answers bool answers whether it was done.

    /// Adds a custom one at the end.
    bool add_editor(language_t language, const system_editor_t& editor);
    /// Adds one of any origin at the end. A name that is taken is an assertion.
    bool add_editor_ex(language_t language, const editor_t& editor);
    /// A name that is not there is an assertion.
    bool remove_editor(language_t language, const std::string& name);
    /// All system editors, or all others.
    bool remove_editors_ex(language_t language, bool is_system);
    /// Custom ones in place of the whole list; of those with the same name the first is taken.
    bool set_editors(language_t language, editors_t editors);
    /// Replaces what is known of one; neither its name nor its origin can be changed.
    bool set_editor(language_t language, const std::string& name, const system_editor_t& editor);
    /// In the order in which they are shown.
    editors_t get_editors(language_t language) const;
    /// All texts empty when there is none.
    system_editor_t get_editor(language_t language, const std::string& name) const;
    /// A name that is not there is an assertion, and gives an empty record.
    editor_t get_editor_ex(language_t language, const std::string& name) const;
    /// Where it comes from; `editor_type_none` when it is not there.
    editor_type_t get_editor_type(language_t language, const std::string& name) const;

    // Names; empty when there is none. To set the empty name is to forget.

    /// The user's default, which holds where none is selected.
    std::string get_default_editor_name(language_t language) const;
    /// The name need not be in the list; false for a language that is not supported.
    bool set_default_editor_name(language_t language, const std::string& name);
    /// The one that opens files of the language.
    std::string get_selected_editor_name(language_t language) const;
    /// As set_default_editor_name().
    bool set_selected_editor_name(language_t language, const std::string& name);
    /// What the desktop would open such a file with.
    std::string get_system_default_editor_name(language_t language) const;

    // What the system and the environment know.

    /// Asks for each language until one fails. Custom editors stay.
    bool load_system_info();
    /// Asks with a file of the language's first extension, made in the temporary folder and removed again
    /// unless it was there before. Nothing is asked for `other`, which has none: ask with a file of yours.
    bool load_system_info(language_t language);
    /// Asks with this file, for its language. Replaces the system editors and the environment's. A custom
    /// editor that has the name of a system one keeps it.
    bool load_system_info(const std::string& file_name);

    /// What came of asking the desktop for a language's editors, last. Not kept, and no part of comparisons.
    /// @since 3.1
    enum class system_state_t
    {
        not_asked, ///< nobody has asked yet
        found,     ///< the list is as the desktop has it
        none,      ///< nothing is registered for such files
        no_answer  ///< a folder in which programs are looked for does not answer
    };
    /// `not_asked` for a language that is not supported.
    /// @since 3.1
    system_state_t get_system_state(language_t language) const;
    /// The folder that did not answer; empty when all did.
    /// @since 3.1
    const std::string& get_silent_folder() const { return m_silent_folder; }

    /// What the environment says now: VISUAL, or EDITOR where that is empty.
    static void fill_env_var_editor(editor_t& editor);

    // What is kept.

    /// Adds what is kept to what is here; what is here already stays as it is. Damaged parts are left out.
    void load(const gen_helpers2::variant_bag_t& bag);
    /// Puts all editors and choices into a bag.
    void save(gen_helpers2::variant_bag_t& bag) const;
    /// Whether the value was stored: a text, not empty, for a language that has none yet.
    static bool load(names_t& names, language_t language, const gen_helpers2::variant_t& value);
    /// The child "external_editor"; null of null.
    static storage_t get_storage(const storage_t& storage);
    /// False when there is no storage.
    bool load_storage_info(const storage_t& storage);
    /// Puts what was changed since it was loaded, or saved last, into the storage: editors and choices that
    /// another program put there meanwhile stay. Writing the storage is its owner's affair. False when there
    /// is none.
    bool save_storage_info(const storage_t& storage) const;

    // For the log.

    /// These are texts for people, of no format that stays.
    static std::string dump(const editor_t& editor);
    /// The editors of one language, in their order.
    std::string dump(language_t language) const;
    /// Names, language by language.
    static std::string dump(const std::map<language_t, std::vector<std::string>>& names);
    /// Records, one a line.
    static std::string dump(const records_t& records);

    /// Same editors in the same order, same choices.
    friend COMMONDLG3_EXPORT bool operator==(const editor_data_t& a, const editor_data_t& b);
    friend bool operator!=(const editor_data_t& a, const editor_data_t& b) { return !(a == b); }

private:
    const editor_t* find(language_t language, const std::string& name) const;
    void erase(language_t language, const std::string& name);
    void add_system_editor(language_t language, const system_editor_t& editor);
    void refresh_env_var_editor(language_t language);
    void load_language(const gen_helpers2::variant_bag_t& bag);

    std::vector<language_t> m_supported_languages;
    // A name stands in a language's list exactly when there is a record of the language and the name.
    std::map<language_t, std::vector<std::string>> m_langs_to_edt_names;
    records_t m_editors;
    language_t m_selected_language = language_info::cpp;
    names_t m_selected_names;
    names_t m_default_names;
    names_t m_system_default_names;
    std::map<language_t, system_state_t> m_system_states;
    std::string m_silent_folder;
    /// As the storage had it when it was last loaded or saved.
    mutable gen_helpers2::variant_bag_t m_stored;
};

} // namespace commondlg3
