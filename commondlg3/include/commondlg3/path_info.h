#pragma once

#include "commondlg3/export.h"

#include <gen_helpers2/path.h>

#include <string>
#include <vector>

namespace commondlg3 {

/// What was typed into a path field: a path where the text is one, otherwise the text itself, so that nothing
/// typed is lost. Of a pattern such as "/data/*.bin" the part before the asterisk can still be used.
///
///     const path_info_t typed(text);
///     if (!typed.is_ok()) ...                                  // nothing absolute to begin with
///     else if (typed.is_exists() && typed.is_directory()) ...  // typed.extract_path()
///
/// A value. Any thread; the questions about files ask the disk each time.
class COMMONDLG3_EXPORT path_info_t
{
public:
    path_info_t();
    path_info_t(const gen_helpers2::path_t& path);
    path_info_t(const std::string& text);
    path_info_t(const char* text) : path_info_t(std::string(text ? text : "")) {}
    path_info_t(const path_info_t&) = default;
    path_info_t& operator=(const path_info_t&) = default;
    virtual ~path_info_t();

    void set_path(const std::string& text);
    void set_path(const char* text) { set_path(std::string(text ? text : "")); }
    /// Leaves a text that was no path as it was; it counts again when this path is empty.
    void set_path(const gen_helpers2::path_t& path) { m_path = path; }
    /// Empty for a text that is no path.
    gen_helpers2::path_t get_path() const { return m_path; }
    /// The path in its own form, or the text as it was typed.
    std::string as_string() const;
    /// True when this holds a text that is no path, or nothing.
    bool is_str_path() const { return m_path.is_empty(); }

    /// The path; of a text that is none, the first absolute part between asterisks. Empty if there is none.
    virtual gen_helpers2::path_t extract_path() const;

    // About the extracted path; false, or empty, without one.
    bool is_ok() const;
    /// Not a folder: what does not exist counts as a file. Ask is_exists() as well where that matters.
    bool is_file() const;
    bool is_directory() const;
    bool is_exists() const;
    /// Without its dot.
    std::string get_extension() const;
    /// Whether the extension is one of these, byte for byte.
    bool check_extension(const std::vector<std::string>& extensions) const;

private:
    gen_helpers2::path_t m_path;
    std::string m_text;
};

} // namespace commondlg3
