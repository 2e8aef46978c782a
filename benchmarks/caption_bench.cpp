// How fast the heading of a page is with very many messages in it, and how fast the page follows a drag of
// its edge.
//
// usage: caption_bench [MESSAGES]
//
// The page has the heading above four other controls and is on the screen. Each line gives the median, the
// 99th of a hundred, and the longest of the operations, in milliseconds of the program's own time: of a
// resize up to the last of its painting.
#include "app.h"
#include "measured.h"

#include <commondlg3/caption_panel.h>

#include <wx/checkbox.h>
#include <wx/frame.h>
#include <wx/sizer.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using bench::measured_t;
using commondlg3::caption_panel_t;

std::string text_of(int i)
{
    std::string text = "Message " + std::to_string(i) + ": the folder cannot be written to. ";
    while (text.size() < static_cast<std::size_t>(i % 5 == 0 ? 300 : 80))
        text += "Choose another one. ";
    return text;
}

void drag(wxFrame* frame, const char* name)
{
    measured_t resize(name, bench::cpu_ms);
    for (int i = 0; i < 200; ++i)
        resize.run([&] {
            const int width = 400 + (i < 100 ? i : 200 - i) * 4;
            frame->SetClientSize(width, frame->GetClientSize().y);
            bench::wait_until_quiet(20);
        });
}

int measure(wxFrame* frame, int count)
{
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    auto* heading = new caption_panel_t(frame, "A caption of the page", text_of(5));
    sizer->Add(heading, 0, wxEXPAND);
    for (int i = 0; i < 4; ++i)
        sizer->Add(new wxCheckBox(frame, wxID_ANY, "A setting of the page"));
    frame->SetSizer(sizer);
    frame->SetClientSize(700, 1000);
    frame->Layout();
    bench::wait_until_quiet(50);
    {
        measured_t add("add, severities mixed", bench::cpu_ms);
        for (int i = 0; i < count; ++i)
            add.run([&] {
                heading->add_message(static_cast<caption_panel_t::severity_t>(i * 7 % 4), text_of(i));
            });
    }
    bench::wait_until_quiet(50);
    {
        measured_t step("step", bench::cpu_ms);
        for (int i = 0; i < count; ++i)
            step.run([&] { heading->show_next_message(); });
    }
    {
        measured_t edit("edit the shown one", bench::cpu_ms);
        for (int i = 0; i < 1000; ++i)
            edit.run([&] { heading->edit_message(heading->get_current_id(), text_of(i + 1)); });
    }
    bench::wait_until_quiet(50);
    drag(frame, "resize, painted");
    heading->edit_message(heading->get_current_id(), [] {
        std::string text;
        while (text.size() < 2000)
            text += text_of(1);
        return text;
    }());
    bench::wait_until_quiet(50);
    drag(frame, "resize, text of 2,000 bytes");
    {
        measured_t remove("remove the shown one", bench::cpu_ms);
        while (heading->get_message_count() > 0)
            remove.run([&] { heading->remove_message(heading->get_current_id()); });
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const int count = argc > 1 ? std::max(1, std::atoi(argv[1])) : 10000;
    return bench::run_in_app(argc, argv, [count](wxFrame* frame) { return measure(frame, count); });
}
