/// What the tests of paths and pages share.
#pragma once

#include "support.h"

#include <wx/modalhook.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace test {

/// Answers the toolkit's own choosers in place of the user, before they are shown.
class chooser_answer_t : public wxModalDialogHook
{
public:
    explicit chooser_answer_t(std::function<int(wxDialog*)> answer) : m_answer(std::move(answer))
    {
        Register();
    }
    ~chooser_answer_t() override { Unregister(); }

protected:
    int Enter(wxDialog* dialog) override { return m_answer(dialog); }

private:
    std::function<int(wxDialog*)> m_answer;
};

/// Chooses in the file chooser that is shown next, as the user would; `start` receives the folder that it
/// began in.
void answer_for_real(const std::string& choice, std::string& start);

/// Collects the message windows that come up, as headline and explanation, and closes each.
class messages_t : public wxModalDialogHook
{
public:
    messages_t() { Register(); }
    ~messages_t() override { Unregister(); }
    std::vector<std::pair<std::string, std::string>> shown;

protected:
    int Enter(wxDialog* dialog) override;
};

/// Another value of an environment variable, or none (null), for as long as it lives.
class variable_guard_t
{
public:
    variable_guard_t(const char* name, const char* value);
    ~variable_guard_t();

private:
    std::string m_name;
    bool m_was_set;
    std::string m_value;
};

/// A user without special rights for as long as it lives, where the tests run as root.
class ordinary_user_t
{
public:
    ordinary_user_t();
    ~ordinary_user_t();
};

void make_file(const std::string& path, const std::string& text = {});
std::string read_file(const std::string& path);

} // namespace test
