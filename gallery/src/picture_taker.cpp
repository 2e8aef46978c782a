#include "picture_taker.h"

#include "entries.h"

#include <wx_helpers1/painted.h>
#include <wx_helpers1/text.h>

#include <wx/app.h>
#include <wx/filename.h>
#include <wx/timer.h>
#include <wx/toplevel.h>

#include <cstdio>
#include <memory>

namespace gallery {
namespace {

// What a window does right after its first painting: focus rings, default buttons, the window manager's
// frame.
constexpr int settle_milliseconds = 250;

class taker_t : public wxEvtHandler
{
public:
    taker_t(const std::string& folder, std::function<void(int)> done)
        : m_folder(folder), m_done(std::move(done))
    {
        Bind(wxEVT_TIMER, [this](wxTimerEvent&) { take(); });
        m_timer.SetOwner(this);
    }

    void start() { m_timer.StartOnce(settle_milliseconds); }

private:
    // The main window first; then each entry, whose open() comes back once its picture closed it.
    void take()
    {
        if (!m_window) {
            save("gallery", *wxDynamicCast(wxTheApp->GetTopWindow(), wxTopLevelWindow));
            for (const entry_t& entry : entries()) {
                m_name = entry.id;
                wx_helpers1::when_next_window_is_painted([this](wxTopLevelWindow* window) {
                    m_window = window;
                    m_timer.StartOnce(settle_milliseconds);
                });
                entry.open(entry.data, wxTheApp->GetTopWindow());
            }
            m_done(m_failed);
            return;
        }
        save(m_name, *m_window);
        m_window->Close();
    }

    void save(const std::string& name, const wxTopLevelWindow& window)
    {
        const std::string file = m_folder + "/" + name + ".png";
        if (wx_helpers1::save_picture(window, file))
            return;
        std::fprintf(stderr, "cannot write %s\n", file.c_str());
        ++m_failed;
    }

    std::string m_folder;
    std::function<void(int)> m_done;
    wxTimer m_timer;
    std::string m_name;
    wxTopLevelWindow* m_window = nullptr;
    int m_failed = 0;
};

} // namespace

void take_pictures(const std::string& folder, std::function<void(int)> done)
{
    wxFileName::Mkdir(wx_helpers1::to_wx(folder), wxS_DIR_DEFAULT, wxPATH_MKDIR_FULL);
    auto taker = std::make_shared<std::unique_ptr<taker_t>>();
    *taker = std::make_unique<taker_t>(folder, [taker, done = std::move(done)](int failed) {
        done(failed);
        wxTheApp->CallAfter([taker] { taker->reset(); });
    });
    (*taker)->start();
}

} // namespace gallery
