#pragma once

#include "commondlg3/export.h"

#include <map>
#include <string>
#include <vector>

namespace commondlg3 {

/// The languages that source files are written in: what a file's name says, and what a language is called.
///
///     if (language_info::get_language(file) == language_info::cpp) ...
///
/// The tables are filled when first needed; names are those of the user-interface language at that moment,
/// for the length of the process. Nothing is locked: GUI thread.
class COMMONDLG3_EXPORT language_info
{
public:
    /// What files are told apart by.
    enum language_t : unsigned
    {
        cpp = 0,     ///< C as well
        csharp = 1,  ///< known by its files; has no list of editors
        fortran = 2, ///< of any form
        other = 3    ///< everything else
    };

    /// By the extension alone, upper and lower case apart, which a language's pattern matches as a whole, or
    /// in which it stands literally ("x.c++"); `other` for a name without one. The file need not exist.
    static language_t get_language(const std::string& file_name);
    /// The language of exactly that localized name; `other` if there is none.
    static language_t get_language_by_name(const std::string& name);
    /// Empty for a number that is no language.
    static std::string get_localized_name(language_t language);
    /// Without dots, the usual one first; none for `other`, to which every extension belongs.
    static std::vector<std::string> get_extensions(language_t language);

private:
    static const std::map<language_t, std::string>& patterns();
    static const std::map<language_t, std::string>& localized_names();
};

} // namespace commondlg3
