/// Finding settings by the words that stand on their pages.
#pragma once

#include <wx/event.h>
#include <wx/weakref.h>
#include <wx/window.h>

#include <string>
#include <vector>

namespace commondlg3 {

/// What the user looks for: all words, in any order and any case.
class search_words_t
{
public:
    explicit search_words_t(const std::string& typed);
    bool empty() const { return m_words.empty(); }
    bool are_in(const std::string& text) const;
    /// The same for a text from to_searched().
    bool are_in_searched(const std::string& text) const;

private:
    std::vector<std::string> m_words;
};

/// A text as it is searched, without regard to case.
std::string to_searched(const std::string& text);
/// All texts that a page shows, a line each.
std::string get_page_texts(const wxWindow& page);
/// The labels, boxes, buttons and lists of a page that bear all the words.
std::vector<wxWindow*> find_settings(wxWindow& page, const search_words_t& words);
/// Puts the keyboard's focus on the setting that a label stands for.
void focus_setting(wxWindow& label);

/// Marks what was found, until something else is.
class found_marks_t
{
public:
    void show(const std::vector<wxWindow*>& found);
    wxWindow* get_first() const;

private:
    std::vector<wxWeakRef<wxWindow>> m_marked;
};

} // namespace commondlg3
