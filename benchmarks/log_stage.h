// What the parts of log_bench share: lines, a window, and the event loop.
#pragma once

#include <commondlg3/inplace_ctrl.h>

#include <vdx/event_log.h>

#include <wx/frame.h>
#include <wx/sizer.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <unistd.h>
#include <vector>

using commondlg3::inplace_ctrl_t;

inline double now()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

inline double resident_bytes()
{
    long total = 0, resident = 0;
    if (FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%ld %ld", &total, &resident) != 2)
            resident = 0;
        std::fclose(file);
    }
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

inline double quantile(std::vector<double> values, double q)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1,
                           static_cast<std::size_t>(q * static_cast<double>(values.size())))];
}

inline std::string make_line(int i)
{
    static const char* const words[] = {"reading", "block",   "of",    "sample",
                                        "device",  "channel", "value", "limits"};
    char head[64];
    std::snprintf(head, sizeof head, "%09d 12:34:56.%03d ", i, i % 1000);
    std::string line = head;
    const std::size_t length = i % 5 == 4 ? 300 : 80;
    for (int word = i * 7; line.size() < length; ++word) {
        line += words[word % 8];
        line += ' ';
    }
    line.resize(length);
    return line;
}

inline msngr2::ESeverity severity_of(int i)
{
    return i % 97 == 0 ? msngr2::sev_error : i % 13 == 0 ? msngr2::sev_warning : msngr2::sev_none;
}

// One window with one widget in it, and the event loop.
class stage_t
{
public:
    stage_t() : m_frame(new wxFrame(nullptr, wxID_ANY, "log", wxPoint(20, 20)))
    {
        g_signal_connect_after(m_frame->GetHandle(), "draw", G_CALLBACK(on_draw), this);
    }
    ~stage_t() { delete m_frame; }

    wxFrame* frame() { return m_frame; }
    void show(wxWindow* widget)
    {
        auto* sizer = new wxBoxSizer(wxVERTICAL);
        sizer->Add(widget, 1, wxEXPAND);
        m_frame->SetSizer(sizer);
        m_frame->SetClientSize(800, 600);
        m_frame->Show();
        settle(0.2);
    }

    // Turns the loop until the condition holds; keeps the longest dispatch.
    void run_until(const std::function<bool()>& condition)
    {
        while (!condition())
            iterate();
    }
    void settle(double quiet)
    {
        for (double last = now(); now() - last < quiet;)
            if (iterate() > 2e-4)
                last = now();
    }
    double iterate()
    {
        const double begin = now();
        if (!g_main_context_iteration(nullptr, FALSE)) {
            usleep(100);
            return 0;
        }
        const double took = now() - begin;
        longest = std::max(longest, took);
        return took;
    }
    // The time inside the loop until everything that `act` leads to is painted.
    double frame_of(const std::function<void()>& act)
    {
        const long before = frames;
        double begin = now();
        act();
        double busy = now() - begin;
        const double give_up = now() + 0.5;
        while (frames == before && now() < give_up)
            busy += iterate();
        for (double last = now(); now() - last < 0.02;) {
            const double took = iterate();
            busy += took;
            if (took > 2e-4)
                last = now();
        }
        gdk_display_sync(gdk_display_get_default());
        return busy;
    }

    long frames = 0;
    double longest = 0;

private:
    static gboolean on_draw(GtkWidget*, cairo_t*, stage_t* self)
    {
        ++self->frames;
        return FALSE;
    }

    wxFrame* m_frame;
};

inline commondlg3::message_t::ptr_t make_message(const std::string& caption)
{
    commondlg3::message_t::ptr_t message(new commondlg3::message_t);
    message->caption = caption;
    return message;
}

inline std::size_t log_size(inplace_ctrl_t& control)
{
    std::size_t size = 0;
    for (const auto& element : control.get_log().GetElements())
        size += element->GetLines().size();
    return size;
}

inline void print(const char* name, double value, const char* unit)
{
    std::printf("%-44s %10.3f %s\n", name, value, unit);
    std::fflush(stdout);
}
