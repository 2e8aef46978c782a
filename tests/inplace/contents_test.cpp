// Keeping a log in a file: as a bag, and as a stream that a worker writes.
#include "log_tools.h"
#include "tools.h"

#include <commondlg3/inplace_contents.h>
#include <gen_helpers2/variant_bag_file.h>

#include <filesystem>
#include <string>

using namespace commondlg3;
using namespace msngr2;
using gen_helpers2::path_t;
using gen_helpers2::variant_bag_t;

namespace {

path_t in_folder(const test::temp_dir_t& folder, const char* name = "log.xml")
{
    return path_t(folder.path() + "/" + name);
}

void fill(test::log_window_t& window, int lines)
{
    auto message = test::with_buttons("caption \x01 <&>", {1});
    message->message = "body \xff";
    message->picture = standard_message_t::get_icon_by_type(standard_message_t::icon_types_t::warning);
    test::say_lines(window, window->add_message(message, {}), lines);
    window->add_message(test::make_message("second"), {});
    window->get_messenger(0)->say(sev_status, "not kept");
    test::settle();
}

} // namespace

TEST(InplaceContents, the_stream_is_the_file_of_the_bag)
{
    const test::temp_dir_t folder;
    test::log_window_t window;
    fill(window, 50);
    window->add_progress(test::make_progress("progress"), {});
    variant_bag_t bag;
    ASSERT_TRUE(window->save(bag).succeeded());
    EXPECT_TRUE(window->take_contents().save(in_folder(folder)).succeeded());
    EXPECT_TRUE(window.log().GetElements().empty());
    EXPECT_FALSE(window->has_changes());
    variant_bag_t streamed;
    ASSERT_TRUE(gen_helpers2::load_variant_bag(in_folder(folder), streamed).succeeded());
    EXPECT_EQ(streamed, bag);
    EXPECT_TRUE(window->load(bag).succeeded());
    EXPECT_FALSE(window->has_changes()) << "right after loading";
    EXPECT_TRUE(test::lines_of(window.control(), 0).empty()) << "lines are said again, and shown later";
    test::settle();
    EXPECT_TRUE(window->has_changes());
    // And read back by a worker, into the log that was emptied.
    window->clear();
    window->load_file(in_folder(folder));
    ASSERT_TRUE(test::wait_for([&] { return test::captions_of(window.control()).size() == 3; }));
    test::settle();
    EXPECT_TRUE(window->has_changes()) << "as when a bag is loaded: its lines were shown";
    EXPECT_FALSE(window.element(0).GetHead().picture.is_empty());
    EXPECT_TRUE(window.element(0).GetButtons().empty());
    EXPECT_FALSE(window.element(2).GetGauge().IsShown()) << "progress comes back as a plain message";
}

TEST(InplaceContents, logs_of_earlier_versions)
{
    for (const auto& version : std::filesystem::directory_iterator(OLD_VERSIONS)) {
        if (!version.is_directory())
            continue;
        SCOPED_TRACE(version.path());
        variant_bag_t kept;
        ASSERT_TRUE(
            gen_helpers2::load_variant_bag(path_t((version.path() / "log.xml").string()), kept).succeeded());
        test::log_window_t window;
        EXPECT_TRUE(window->load(kept).succeeded());
        test::settle();
        EXPECT_FALSE(window.element(0).GetHead().picture.is_empty());
        EXPECT_EQ(test::lines_of(window.control(), 0).size(), 5u);
        variant_bag_t saved;
        ASSERT_TRUE(window->save(saved).succeeded());
        for (variant_bag_t* bag : {&kept, &saved}) // a picture's text may name its colours in another order
            EXPECT_EQ(bag->find_child("message_entry_t")->remove("img"), 1u);
        EXPECT_EQ(saved, kept);
    }
}

// Whenever the window of a long log is closed, everything that was said is in the file: also what was not
// shown yet.
TEST(InplaceContents, a_long_log_is_kept_whole)
{
    const test::temp_dir_t folder;
    {
        test::log_window_t window;
        fill(window, test::flood);
        for (int i = 0; i < 1000; ++i)
            window->get_messenger(0)->say(sev_none, "said at the last moment");
        window->take_contents().save_later(in_folder(folder));
        window.destroy();
    }
    // While it is read the window closes again: nothing of the file may be lost, nor what was added.
    {
        test::log_window_t window;
        window->load_file(in_folder(folder));
        window->add_message(test::make_message("added"), {});
        ASSERT_TRUE(test::wait_for([&] { return test::captions_of(window.control()).size() > 1; }));
        window->take_contents().save_later(in_folder(folder));
    }
    test::log_window_t window;
    window->load_file(in_folder(folder)); // behind the saving, which may not be done yet
    const auto count = [&] {
        const auto& elements = window.log().GetElements();
        return elements.empty() ? 0 : elements[0]->GetLines().size();
    };
    ASSERT_TRUE(test::wait_for([&] { return count() == test::flood + 1000; }, 120000)) << count();
    ASSERT_TRUE(test::wait_for([&] { return test::captions_of(window.control()).size() == 3; }));
}

// Saved again, the log would be what could be read of it.
TEST(InplaceContents, a_file_that_is_damaged_stays_whole_beside_the_next_one)
{
    const test::temp_dir_t folder;
    test::log_window_t window;
    fill(window, 50);
    ASSERT_TRUE(window->take_contents().save(in_folder(folder)).succeeded());
    const auto bytes_of = [](const path_t& file) { return test::read_file(file.as_string()); };
    std::filesystem::resize_file(in_folder(folder).as_string(), 2000);
    const std::string damaged = bytes_of(in_folder(folder));
    window->load_file(in_folder(folder));
    ASSERT_TRUE(test::wait_for([&] { return bytes_of(in_folder(folder, "log.xml.damaged")) == damaged; }));
    ASSERT_TRUE(window->take_contents().save(in_folder(folder)).succeeded());
    EXPECT_NE(bytes_of(in_folder(folder)), damaged);
    EXPECT_EQ(bytes_of(in_folder(folder, "log.xml.damaged")), damaged);
}

TEST(InplaceContents, clearing_ends_the_reading_of_a_file)
{
    const test::temp_dir_t folder;
    test::log_window_t window;
    fill(window, test::flood / 10);
    ASSERT_TRUE(window->take_contents().save(in_folder(folder)).succeeded());
    window->load_file(in_folder(folder));
    ASSERT_TRUE(test::wait_for([&] { return !window.log().GetElements().empty(); }));
    EXPECT_TRUE(window->clear().succeeded());
    // Files are read one after the other: what another one holds is seen once the first would have been.
    variant_bag_t bag;
    bag.add_child("message_entry_t").put("cap", "another");
    ASSERT_TRUE(save_variant_bag(bag, in_folder(folder, "another.xml")).succeeded());
    window->load_file(in_folder(folder, "another.xml"));
    ASSERT_TRUE(test::wait_for([&] { return !window.log().GetElements().empty(); }, 20000));
    test::settle();
    ASSERT_EQ(window.log().GetElements().size(), 1u);
    EXPECT_EQ(window.log().GetElements()[0]->GetHead().header, "another");
}
