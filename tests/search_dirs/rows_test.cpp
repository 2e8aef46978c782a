#include <gtest/gtest.h>

#include <vdxpropgrid2/grid_rows.h>

#include <random>
#include <string>
#include <vector>

namespace {

using namespace vdxpropgrid2;

std::string texts(const grid_rows_t& rows)
{
    std::string all;
    for (const row_t& row : rows.get())
        all += row.text;
    return all;
}

TEST(GridRows, EachStepGoesBackAndForthWithItsKeys)
{
    grid_rows_t rows;
    rows.assign({{"a"}, {"b", true, 7}, {"c"}});
    EXPECT_EQ(7, rows.at(1).key);
    EXPECT_NE(rows.at(0).key, rows.at(2).key);
    EXPECT_FALSE(rows.undo()) << "what was there from the beginning stays";
    rows.insert(1, {{"x"}, {"y"}});
    rows.move(0, 4);
    rows.set_text(3, "C");
    rows.set_checked(3, true);
    const row_key_t removed = rows.at(2).key;
    rows.remove(2);
    EXPECT_EQ("xyCa", texts(rows));
    EXPECT_EQ(rows.size(), rows.find(removed));
    const auto back = rows.undo();
    ASSERT_TRUE(back);
    EXPECT_EQ(rows_change_t::kind_t::inserted, back->kind);
    EXPECT_EQ(2U, rows.find(removed)) << "the same row, with what belongs to its key";
    for (int i = 0; i < 4; ++i)
        EXPECT_TRUE(rows.undo());
    EXPECT_EQ("abc", texts(rows));
    while (rows.redo()) {
    }
    EXPECT_EQ("xyCa", texts(rows));
    rows.undo();
    rows.set_text(0, "z");
    EXPECT_FALSE(rows.can_redo()) << "another way was taken";
}

TEST(GridRows, PlacesThatAreNoneChangeNothing)
{
    grid_rows_t rows;
    EXPECT_FALSE(rows.insert(1, {{"a"}}) || rows.insert(0, {}) || rows.remove(0) || rows.move(0, 0));
    rows.assign({{"a"}});
    EXPECT_FALSE(rows.remove(0, 2) || rows.remove(1) || rows.remove(0, std::size_t(-1)) || rows.move(0, 1));
    EXPECT_FALSE(rows.set_text(0, "a") || rows.set_text(1, "b") || rows.set_checked(0, false));
    EXPECT_FALSE(rows.can_undo());
}

// Whoever shows the rows applies the changes to a copy: the two must never differ.
TEST(GridRows, ToldChangesLeadToTheSameRowsInAnyOrderOfSteps)
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
    std::mt19937 random(11);
    for (int step = 0; step < 3000; ++step) {
        const std::size_t at = random() % (rows.size() + 1);
        switch (random() % 8) {
        case 0:
        case 1:
            follow(rows.insert(at, std::vector<row_t>(1 + random() % 3, row_t{std::to_string(step)})));
            break;
        case 2:
            follow(rows.remove(at, 1 + random() % 3));
            break;
        case 3:
            follow(rows.move(at, random() % (rows.size() + 1)));
            break;
        case 4:
            follow(rows.set_text(at, std::to_string(step)));
            break;
        case 5:
            follow(rows.set_checked(at, step % 2 == 0));
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
