// How fast the page of search directories is with very many of them.
//
// usage: search_dirs_bench [DIRECTORIES]
//
// The page is on the screen; half of its directories exist. Each line gives the median, the 99th of a
// hundred, and the longest of the operations in milliseconds of the clock. "turn" is what one turn of the
// event loop takes while all directories are looked at in the background and their messages come in: what a
// key press would have to wait for.
#include "app.h"
#include "measured.h"

#include <commondlg3/caption_panel.h>
#include <commondlg3/search_dirs_tab.h>

#include <wx/app.h>
#include <wx/frame.h>
#include <wx/sizer.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using bench::measured_t;
using commondlg3::search_dirs_tab_t;

// Until nothing has been said for a while.
void turn_until_checked(measured_t& turns, const search_dirs_tab_t* tab)
{
    int messages = -1;
    double since = bench::wall_ms();
    while (bench::wall_ms() - since < 400) {
        if (g_main_context_pending(nullptr))
            turns.run([] { g_main_context_iteration(nullptr, FALSE); });
        else if (!wxTheApp->ProcessIdle())
            g_usleep(200);
        if (tab->get_caption_panel()->get_message_count() != messages) {
            messages = tab->get_caption_panel()->get_message_count();
            since = bench::wall_ms();
        }
    }
    std::printf("%d messages\n", messages);
}

int measure(wxFrame* frame, int count)
{
    const auto base = std::filesystem::temp_directory_path() / "search-dirs-bench";
    const auto container = FF_2_13::make_search_dir_container(nullptr);
    const auto at = container->get_dirs(FF_2_13::category_sources);
    for (int i = 0; i < count; ++i) {
        const auto dir = base / std::to_string(i);
        if (i % 2 == 0)
            std::filesystem::create_directories(dir);
        at->add(dir.native(), false);
    }
    auto* tab = new search_dirs_tab_t(nullptr, FF_2_13::category_sources);
    tab->create(frame);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(tab, 1, wxEXPAND);
    frame->SetSizer(sizer);
    frame->SetClientSize(700, 600);
    frame->Layout();
    bench::wait_until_quiet(50);
    auto* grid = tab->get_grid();
    {
        measured_t fill("fill", bench::wall_ms);
        fill.run([&] { tab->set_data(container, FF_2_13::category_sources); });
    }
    {
        measured_t turns("turn while all are looked at", bench::wall_ms);
        measured_t all("all looked at, with 400 ms quiet", bench::wall_ms);
        all.run([&] { turn_until_checked(turns, tab); });
    }
    {
        measured_t move("move by one", bench::wall_ms);
        for (int i = 0; i < 1000; ++i)
            move.run([&] { grid->move_row(count / 2 + i % 10, count / 2 + i % 10 + 1); });
    }
    bench::wait_until_quiet(100);
    {
        measured_t move("move from end to beginning", bench::wall_ms);
        for (int i = 0; i < 200; ++i)
            move.run([&] { grid->move_row(count - 1, 0); });
    }
    bench::wait_until_quiet(100);
    {
        measured_t turns("turn after a change", bench::wall_ms);
        measured_t typed("change a text", bench::wall_ms);
        for (int i = 0; i < 20; ++i) {
            typed.run([&] { grid->set_text(i, "/none/" + std::to_string(i)); });
            turn_until_checked(turns, tab);
        }
    }
    {
        measured_t remove("remove, with its message", bench::wall_ms);
        for (int i = 0; i < 1000 && grid->row_count() > 1; ++i)
            remove.run([&] { tab->remove_row(grid->row_count() / 2); });
    }
    bench::wait_until_quiet(100);
    {
        measured_t undo("undo a removal", bench::wall_ms);
        for (int i = 0; i < 100; ++i)
            undo.run([&] { grid->undo(); });
    }
    {
        measured_t save("save", bench::wall_ms);
        save.run([&] { tab->save_settings(); });
    }
    {
        std::vector<std::string> many(static_cast<std::size_t>(count), "/usr");
        measured_t paste("insert as many again", bench::wall_ms);
        paste.run([&] { grid->insert_rows(0, many); });
        measured_t undo("undo that", bench::wall_ms);
        undo.run([&] { grid->undo(); });
    }
    std::filesystem::remove_all(base);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const int count = argc > 1 ? std::max(100, std::atoi(argv[1])) : 10000;
    return bench::run_in_app(argc, argv, [count](wxFrame* frame) { return measure(frame, count); });
}
