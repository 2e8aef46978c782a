#include <gtest/gtest.h>

#include <vdxpropgrid2/grid_rows.h>

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
        switch (random() % 8) {
        case 0:
        case 1:
            follow_step(rows.insert(at, std::vector<row_t>(1 + random() % 3, row_t{std::to_string(step)})));
            break;
        case 2:
            follow_step(rows.remove(at, 1 + random() % 3));
            break;
        case 3:
            follow_step(rows.move(at, random() % (rows.size() + 1)));
            break;
        case 4:
            follow_step(rows.set_text(at, std::to_string(step)));
            break;
        case 5:
            follow_step(rows.set_checked(at, step % 2 == 0));
            break;
        case 6:
            follow(rows.undo());
            break;
        default:
            follow(rows.redo());
        }
        ASSERT_EQ(rows.get(), shown) << step;
    }
}

} // namespace
