// Whoever works all day opens the same windows again and again.
#include "closer.h"
#include "entries.h"
#include "log_tools.h"
#include "support.h"

#include <commondlg3/inplace_contents.h>

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

int rounds()
{
    const char* given = std::getenv("MEMORY_ROUNDS");
    return given ? std::atoi(given) : 40;
}

std::size_t bytes_in_use()
{
    test::settle();
    // What a worker frees is freed when a later work of its is done.
    const test::temp_dir_t folder;
    commondlg3::inplace_contents_t().save_later(gen_helpers2::path_t(folder.path() + "/log.xml"));
    commondlg3::inplace_contents_t::wait_until_saved();
    const auto info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
}

/// Does it many times, half of them until what is kept for the length of the process is there.
/// @return the bytes that each of the others left behind
template <class Work>
double left_behind(int times, const Work& work)
{
    std::size_t before = 0;
    for (int i = 0; i < times; ++i) {
        if (i == times / 2)
            before = bytes_in_use();
        work();
    }
    return (static_cast<double>(bytes_in_use()) - static_cast<double>(before)) / (times - times / 2);
}

TEST(Memory, OpeningLeavesNothingBehind)
{
    const test::temp_dir_t folder;
    const test::product_guard_t product(RESOURCE_DIR, LOCALE_DIR, folder.path());
    const auto& entries = gallery::entries();
    const double bytes = left_behind(rounds(), [&entries] {
        for (const gallery::entry_t& entry : entries) {
            test::closer_t closer;
            entry.open(entry.data, test::main_window());
        }
    });
    std::fprintf(stderr, "%.0f bytes after %d windows\n", bytes, static_cast<int>(entries.size()));
    EXPECT_LT(bytes, 300.0 * static_cast<double>(entries.size())) << "a window that stays has 100,000";
}

TEST(Memory, FloodsLeaveNothingBehind)
{
    test::log_window_t window;
    const double bytes = left_behind(3 * rounds(), [&window] {
        const auto tag = window->add_message(test::make_message("flood"), {});
        for (int i = 0; i < 20000; ++i)
            window->get_messenger(tag)->say(msngr2::sev_none, test::flood_line(i).c_str());
        EXPECT_TRUE(test::wait_for([&] { return window.element(0).GetLines().size() == 20000; }, 60000));
        window->clear();
    });
    std::fprintf(stderr, "%.0f bytes after each flood\n", bytes);
    EXPECT_LT(bytes, 40000) << "two bytes a line; its texts have 2,500,000";
}

} // namespace
