#pragma once

#include "commondlg3/caption_panel.h"
#include "commondlg3/language_info.h"

#include <gen_helpers2/system_editor.h>

#include <functional>
#include <memory>
#include <string>

class wxTimer;

namespace commondlg3 {

/// Opens a sample file in an editor and tells what comes of it. The sample stays until the process ends: an
/// editor may need longer to read it than the page is open. GUI thread; it may be destroyed at any time.
class editor_trial_t
{
public:
    using severity_t = caption_panel_t::severity_t;
    using told_t = std::function<void(severity_t severity, const std::string& text)>;

    explicit editor_trial_t(told_t told);
    ~editor_trial_t();

    /// Something is told before this returns; of an earlier trial nothing more is told.
    void start(const gen_helpers2::system_editor_t& editor, language_info::language_t language);

    /// Nothing more is told of the trial before.
    void forget() { m_run.reset(); }

private:
    struct run_t;

    void on_started(const std::shared_ptr<run_t>& run);
    void on_time();

    told_t m_told;
    std::shared_ptr<run_t> m_run;
    std::shared_ptr<editor_trial_t*> m_self; // gone with this
    std::unique_ptr<wxTimer> m_timer;
};

} // namespace commondlg3
