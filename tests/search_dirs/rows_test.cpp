#include <gtest/gtest.h>

#include <vdxpropgrid2/grid_rows.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace vdxpropgrid2;

// Whoever shows the rows applies the changes to a copy: the two must never differ.
TEST(GridRows, ToldChangesLeadToTheSameRowsAndEachStepGoesBackAndForth)
{
    grid_rows_t rows;
    std::vector<row_t> shown;
    const auto follow = [&](const grid_rows_t::change_t& change) {
        if (!change)
            return;
        const auto at = shown.begin() + static_cast<std::ptrdiff_t>(change->at);
        const auto count = static_cast<std::ptrdiff_t>(change->count);
        const auto now = rows.get().begin() + static_cast<std::ptrdiff_t>(change->at);
        switch (change->kind) {
        case rows_change_t::kind_t::inserted:
            shown.insert(at, now, now + count);
            break;
        case rows_change_t::kind_t::removed:
            shown.erase(at, at + count);
            break;
        case rows_change_t::kind_t::changed:
            *at = *now;
            break;
        case rows_change_t::kind_t::moved: {
            const row_t row = *at;
            shown.erase(at);
            shown.insert(shown.begin() + static_cast<std::ptrdiff_t>(change->to), row);
        }
        }
    };
    std::vector<row_t> before;
    // The same rows, with what belongs to their keys.
    const auto follow_step = [&](const grid_rows_t::change_t& change) {
        follow(change);
        if (!change)
            return;
        EXPECT_FALSE(rows.can_redo()) << "another way was taken";
        const std::vector<row_t> after = rows.get();
        follow(rows.undo());
        EXPECT_EQ(before, rows.get());
        follow(rows.redo());
        EXPECT_EQ(after, rows.get());
    };
    rows.assign({{"a"}, {"b", true, 7}});
    shown = rows.get();
    EXPECT_EQ(7, shown[1].key);
    EXPECT_FALSE(rows.undo()) << "what was there from the beginning stays";
    std::mt19937 random(11);
    for (int step = 0; step < 3000; ++step) {
        before = rows.get();
        const std::size_t at = random() % (rows.size() + 1); // beyond the last row, too
        const auto other = static_cast<std::size_t>(random());
        const std::vector<row_t> more(1 + other % 3, row_t{std::to_string(step)});
        const std::function<void()> acts[] = {
            [&] { follow_step(rows.insert(at, more)); },
            [&] { follow_step(rows.insert(at, more)); },
            [&] { follow_step(rows.remove(at, more.size())); },
            [&] { follow_step(rows.move(at, other % (rows.size() + 1))); },
            [&] { follow_step(rows.set_text(at, std::to_string(step))); },
            [&] { follow_step(rows.set_checked(at, step % 2 == 0)); },
            [&] { follow(rows.undo()); },
            [&] { follow(rows.redo()); },
        };
        acts[random() % 8]();
        ASSERT_EQ(rows.get(), shown) << step;
    }
}

} // namespace
