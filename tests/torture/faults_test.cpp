#include "faults.h"
#include "test_tools.h"

#include <cfgmgr2/property_storage.h>
#include <ff/search_directories.h>
#include <gen_helpers2/file.h>
#include <gen_helpers2/file_transaction.h>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <functional>
#include <new>
#include <string>
#include <vector>

// Whatever fails while something is saved, for every call that can: either it is told and the old is whole,
// or the new is there; nothing else is left behind, and the next attempt works.
namespace {

using faults::call_t;
using faults::fault_t;
using gen_helpers2::error_code_t;
using test_tools::temp_dir_t;

// Longer than a buffer, so that it takes several writes.
const std::string long_text(100000, 'x');

struct journey_t
{
    const char* name;
    const char* file; ///< that is written, in the folder
    /// Puts something old into the folder; what is made then saves something new there, as often as it is
    /// called.
    std::function<std::function<error_code_t()>(const temp_dir_t&)> begin;
    const char* together_with = nullptr; ///< another file: both are old or both are new
};

std::function<error_code_t()> save_storage(const temp_dir_t& folder, const char* file)
{
    error_code_t opened;
    const auto storage = cfgmgr2::open_property_storage(folder / file, opened);
    storage->set_value("text", long_text);
    storage->get_child("child")->set_value("number", 1);
    return [storage] { return storage->save(); };
}

const std::vector<journey_t> journeys = {
    {"a file", "file",
     [](const temp_dir_t& folder) {
         test_tools::write_text(folder / "file", "old");
         return [file = folder / "file"] { return gen_helpers2::write_whole_file(file, long_text); };
     }},
    {"a file behind a link", "link",
     [](const temp_dir_t& folder) {
         ::mkdir((folder / "there").as_string().c_str(), 0700);
         EXPECT_EQ(::symlink("there/file", (folder / "link").as_string().c_str()), 0);
         test_tools::write_text(folder / "link", "old");
         return [file = folder / "link"] { return gen_helpers2::write_whole_file(file, long_text); };
     }},
    {"the first preferences", "new/folder/preferences.xml",
     [](const temp_dir_t& folder) { return save_storage(folder, "new/folder/preferences.xml"); }},
    {"preferences", "preferences.xml",
     [](const temp_dir_t& folder) {
         test_tools::write_text(folder / "preferences.xml",
                                "<bag version=\"1\"><int name=\"old\">1</int></bag>");
         return save_storage(folder, "preferences.xml");
     }},
    {"preferences that another program changed", "preferences.xml",
     [](const temp_dir_t& folder) {
         test_tools::write_text(folder / "preferences.xml", "<bag version=\"1\"/>");
         auto save = save_storage(folder, "preferences.xml");
         test_tools::write_text(folder / "preferences.xml",
                                "<bag version=\"1\"><int name=\"theirs\">1</int></bag>");
         return save;
     }},
    {"search directories", "dirs.xml",
     [](const temp_dir_t& folder) {
         error_code_t opened;
         const auto dirs =
             FF_2_13::make_search_dir_container(cfgmgr2::open_property_storage(folder / "dirs.xml", opened));
         const auto list = dirs->get_dirs(FF_2_13::category_sources);
         for (int i = 0; i < 100; ++i)
             list->add("/usr/src/" + std::to_string(i), i % 2 == 0);
         return [dirs] { return dirs->save(); };
     }},
    {"several files together", "preferences.xml",
     [](const temp_dir_t& folder) {
         test_tools::write_text(folder / "preferences.xml", "<bag version=\"1\"/>");
         test_tools::write_text(folder / "other.xml", "damaged");
         const auto first = save_storage(folder, "preferences.xml");
         const auto second = save_storage(folder, "other.xml");
         const auto path = folder.path();
         return [first, second, path] {
             gen_helpers2::file_transaction_t transaction(path);
             error_code_t result = first();
             if (result.succeeded())
                 result = second();
             return result.failed() ? result : transaction.commit();
         };
     },
     "other.xml"},
};

/// Tells one text from another, and is short.
std::string contents_of(const temp_dir_t& folder, const char* file)
{
    if (::access((folder / file).as_string().c_str(), F_OK) != 0)
        return "no file";
    const std::string text = test_tools::read_text(folder / file);
    return std::to_string(text.size()) + " bytes, " + std::to_string(std::hash<std::string>()(text)) + ": " +
           text.substr(0, 100);
}

std::string contents(const temp_dir_t& folder, const journey_t& journey)
{
    const std::string text = contents_of(folder, journey.file);
    return journey.together_with ? text + contents_of(folder, journey.together_with) : text;
}

error_code_t save_or_tell(const std::function<error_code_t()>& save)
{
    try {
        return save();
    } catch (const std::bad_alloc&) {
        return error_code_t::io_error("out of memory");
    }
}

struct outcome_t
{
    std::string text;
    std::vector<std::string> names;
};

outcome_t look(const temp_dir_t& folder, const journey_t& journey)
{
    return {contents(folder, journey), folder.names()};
}

outcome_t outcome_without_fault(const journey_t& journey)
{
    const temp_dir_t folder;
    EXPECT_TRUE(journey.begin(folder)().succeeded());
    return look(folder, journey);
}

/// @return whether there was such a call
bool strike(const journey_t& journey, const outcome_t& all_well, call_t call, int n, fault_t fault)
{
    const temp_dir_t folder;
    const auto save = journey.begin(folder);
    const outcome_t before = look(folder, journey);
    faults::arm(call, n, fault);
    const error_code_t result = save_or_tell(save);
    const bool struck = faults::disarm();
    const outcome_t after = look(folder, journey);
    EXPECT_EQ(after.text, result.failed() ? before.text : all_well.text) << result.as_string();
    // Folders that were made on the way may stay.
    const bool makes_names = before.names != all_well.names;
    if (result.succeeded() || !makes_names) {
        EXPECT_EQ(after.names, all_well.names);
    }
    if (fault == fault_t::interrupted || fault == fault_t::shortened) {
        EXPECT_TRUE(result.succeeded()) << result.as_string();
    }
    const error_code_t again = save();
    EXPECT_TRUE(again.succeeded()) << again.as_string();
    EXPECT_EQ(look(folder, journey).text, all_well.text);
    EXPECT_EQ(look(folder, journey).names, all_well.names);
    return struck;
}

TEST(Faults, EveryCallOfASaveMayFail)
{
    int count = 0;
    for (const journey_t& journey : journeys) {
        const outcome_t all_well = outcome_without_fault(journey);
        for (int call = 0; call < static_cast<int>(call_t::count); ++call) {
            const auto kind = static_cast<call_t>(call);
            std::vector<fault_t> ways = {fault_t::fails};
            if (kind == call_t::read || kind == call_t::write)
                ways.insert(ways.end(), {fault_t::interrupted, fault_t::shortened});
            for (const fault_t way : ways) {
                bool struck = true;
                for (int n = 1; struck && !HasFailure(); ++n, ++count) {
                    SCOPED_TRACE(std::string(journey.name) + ", " + faults::name_of(kind) + " " +
                                 std::to_string(n));
                    struck = strike(journey, all_well, kind, n, way);
                }
            }
        }
    }
    EXPECT_GT(count, 200);
    RecordProperty("faults", count);
}

TEST(Faults, AProgramMayBeKilledAtEveryCallOfASave)
{
    int count = 0;
    for (const journey_t& journey : journeys) {
        const outcome_t all_well = outcome_without_fault(journey);
        for (const call_t call : {call_t::open, call_t::stat, call_t::read, call_t::write, call_t::sync,
                                  call_t::link, call_t::rename, call_t::mkdir, call_t::lock}) {
            bool struck = true;
            for (int n = 1; struck && !HasFailure(); ++n, ++count) {
                SCOPED_TRACE(std::string(journey.name) + ", " + faults::name_of(call) + " " +
                             std::to_string(n));
                const temp_dir_t folder;
                const auto save = journey.begin(folder);
                const std::string before = contents(folder, journey);
                const pid_t child = ::fork();
                if (child == 0) {
                    faults::arm(call, n, fault_t::killed);
                    ::_exit(save().succeeded() ? 0 : 1);
                }
                int status = 0;
                ASSERT_EQ(::waitpid(child, &status, 0), child);
                struck = WIFSIGNALED(status);
                gen_helpers2::finish_transaction(folder.path());
                const std::string after = contents(folder, journey);
                EXPECT_TRUE(after == before || after == all_well.text) << after;
                EXPECT_TRUE(save().succeeded());
                EXPECT_EQ(contents(folder, journey), all_well.text);
                EXPECT_EQ(look(folder, journey).names, all_well.names) << "what was killed left something";
            }
        }
    }
    EXPECT_GT(count, 50);
}

// By another program that writes in place, between any two calls: what is read is old, new, or told.
TEST(Faults, AFileMayChangeWhileItIsRead)
{
    const auto bag = [](const std::string& text) {
        return "<bag version=\"1\"><string name=\"text\">" + text + "</string></bag>";
    };
    const std::string old_text(200000, 'a');
    int count = 0;
    for (const std::string& new_text : {std::string(90000, 'b'), std::string(300000, 'b')})
        for (const call_t call : {call_t::open, call_t::stat, call_t::read}) {
            bool struck = true;
            for (int n = 1; struck && !HasFailure(); ++n, ++count) {
                SCOPED_TRACE(std::string(faults::name_of(call)) + " " + std::to_string(n));
                const temp_dir_t folder;
                const auto file = folder / "preferences.xml";
                test_tools::write_text(file, bag(old_text));
                faults::before_due([&] { test_tools::write_text(file, bag(new_text)); });
                faults::arm(call, n, fault_t::preceded);
                error_code_t opened;
                const auto storage = cfgmgr2::open_property_storage(file, opened);
                struck = faults::disarm();
                if (opened.succeeded()) {
                    const auto text = storage->get_value("text").get<std::string>();
                    EXPECT_TRUE(text == old_text || text == new_text) << text.size();
                }
                EXPECT_EQ(test_tools::read_text(file), bag(struck ? new_text : old_text));
            }
        }
    EXPECT_GT(count, 10) << "the last of each kind is not made any more";
}

} // namespace
