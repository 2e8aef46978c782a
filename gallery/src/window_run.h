#pragma once

#include <nlohmann/json.hpp>

#include <functional>
#include <string>
#include <vector>

namespace commondlg3 {
class dialog_base_t;
class pref_base_t;
} // namespace commondlg3

class wxWindow;

namespace gallery {

/// A resource object without which a window cannot be shown.
struct layout_t
{
    std::string file;
    std::string object;
};

layout_t own_layout(const std::string& object);
layout_t library_layout(const std::string& object);

/// One window that is opened for a person or a script, from the opening to the result.
class window_run_t
{
public:
    /// `run` makes the window and calls show(), and may then set data(); without one of the layouts it is not
    /// called, and the user is told what is missing. Returns what the window answered, 0 without one.
    static int run(const std::string& object, wxWindow* parent, const std::vector<layout_t>& layouts,
                   const std::function<void(window_run_t&)>& run);

    void show(commondlg3::dialog_base_t& dialog);
    /// In a frame of its own, which has OK and Cancel; `data_of` is asked while the page still lives. Takes
    /// the page over.
    void show_page(commondlg3::pref_base_t* page, const std::string& title,
                   const std::function<nlohmann::json()>& data_of);
    /// For a window that has a way of its own.
    void show(const std::function<int()>& show_modal);

    /// For what ends without having been shown.
    void set_result(int result) { m_result = result; }
    /// What a script is told of the window when it has ended.
    void set_data(nlohmann::json data) { m_data = std::move(data); }

private:
    window_run_t(const std::string& object, wxWindow* parent) : m_object(object), m_parent(parent) {}

    std::string m_object;
    wxWindow* m_parent;
    int m_result = 0;
    nlohmann::json m_data = nlohmann::json::object();
};

/// Reports by a JSON line that the window which opens next can be used.
void report_when_opened(const std::string& object);

/// Reports by a JSON line when the page ends.
void report_end_of(commondlg3::pref_base_t& page, const std::string& object);

} // namespace gallery
