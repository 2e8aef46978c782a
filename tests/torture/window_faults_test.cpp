// Whatever call fails while a window opens, works and ends, by OK where it has one: the program goes on, and
// says so or has done all of it; what was on the disk is whole, and the next attempt works.
#include "closer.h"
#include "entries.h"
#include "faults.h"
#include "log_tools.h"
#include "support.h"
#include "tools.h"

#include <commondlg3/image_loader.h>
#include <commondlg3/inplace_contents.h>

#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace {

using faults::call_t;
using faults::fault_t;
namespace fs = std::filesystem;

using files_t = std::map<std::string, std::string>;

files_t files_in(const std::string& folder)
{
    files_t files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files[entry.path().lexically_relative(folder)] = test::read_file(entry.path());
    return files;
}

/// Folders of its own: archives that nobody has read yet, and what the user has kept.
class machine_t
{
public:
    machine_t()
    {
        fs::create_directories(config());
        fs::create_directories(share());
        for (const auto& file : fs::directory_iterator(RESOURCE_DIR))
            fs::create_symlink(file.path(), share() + "/" + file.path().filename().string());
    }
    std::string path() const { return m_dir.path(); }
    std::string share() const { return path() + "/share"; }
    std::string config() const { return path() + "/config"; }

private:
    test::temp_dir_t m_dir;
};

int open(const gallery::entry_t& entry, const machine_t& machine, const std::string& share = RESOURCE_DIR)
{
    const test::product_guard_t product(share, LOCALE_DIR, machine.config());
    test::closer_t closer;
    entry.open(entry.data, test::main_window());
    return closer.count();
}

/// Opens the entry once more with its n-th call failing, and once without.
/// @return whether there was such a call: how often a thread looks at the files of the preferences depends on
/// how long they are open
bool strike(const gallery::entry_t& entry, const files_t& old, const files_t& all_well, call_t call, int n,
            fault_t way)
{
    SCOPED_TRACE(entry.id + ", " + faults::name_of(call) + " " + std::to_string(n) +
                 (way == fault_t::fails ? "" : " and on"));
    const machine_t machine;
    open(entry, machine);
    faults::only_below(machine.path());
    faults::arm(call, n, way);
    open(entry, machine, machine.share());
    const bool struck = faults::disarm();
    faults::only_below("");
    test::take_assertions();
    for (const auto& [name, text] : files_in(machine.config())) {
        const auto is_text_of = [&, name = name, text = text](const files_t& files) {
            const auto found = files.find(name);
            return found != files.end() && found->second == text;
        };
        EXPECT_TRUE(is_text_of(old) || is_text_of(all_well)) << name << ":\n" << text;
    }
    EXPECT_GE(open(entry, machine, machine.share()), 1) << "the next attempt works";
    return struck;
}

TEST(WindowFaults, EveryCallMayFail)
{
    using commondlg3::image_loader_t;
    image_loader_t::get().load_image(image_loader_t::image_type_t::up); // finds its archive
    int count = 0;
    std::set<std::string> objects;
    for (const gallery::entry_t& entry : gallery::entries()) {
        if (!objects.insert(entry.object).second)
            continue; // another text in the same window
        const machine_t machine;
        open(entry, machine);
        const files_t old = files_in(machine.config());
        faults::only_below(machine.path());
        faults::arm(call_t::open, 1000000, fault_t::fails);
        const bool opens_again = open(entry, machine, machine.share()) > 0;
        faults::disarm();
        if (!opens_again)
            continue; // a message that the first opening has silenced
        const files_t all_well = files_in(machine.config());
        std::map<call_t, int> calls;
        for (int call = 0; call < static_cast<int>(call_t::memory); ++call)
            calls[static_cast<call_t>(call)] = faults::count_of(static_cast<call_t>(call));
        for (const auto& [call, most] : calls)
            for (const fault_t way : {fault_t::fails, fault_t::fails_on})
                for (int n = 1; n <= most && !HasFailure(); ++n)
                    count += strike(entry, old, all_well, call, n, way) ? 1 : 0;
    }
    std::printf("%d faults\n", count);
    EXPECT_GT(count, 300);
}

int times_added(const std::string& text)
{
    int times = 0;
    for (auto at = text.find("added"); at != std::string::npos; at = text.find("added", at + 1))
        ++times;
    return times;
}

/// Keeps a log as a window does that is opened and closed, with a line more.
/// @return whether it is said to be kept
bool add_to_log(const std::string& file)
{
    const auto saved = std::make_shared<bool>(false);
    {
        test::log_window_t window;
        window->load_file(gen_helpers2::path_t(file));
        test::wait_for([&] { return window->has_changes(); }, 100); // it may never come
        const auto tag = window->add_message(test::make_message("new"), {});
        window->get_messenger(tag)->say(msngr2::sev_none, "added");
        window->take_contents().save_later(gen_helpers2::path_t(file),
                                           [saved](const auto& result) { *saved = result.succeeded(); });
    }
    commondlg3::inplace_contents_t::wait_until_saved();
    return *saved;
}

TEST(WindowFaults, ALogIsNeverLost)
{
    int count = 0;
    for (int call = 0; call < static_cast<int>(call_t::memory); ++call)
        for (const fault_t way : {fault_t::fails, fault_t::fails_on}) {
            bool struck = true;
            for (int n = 1; struck && !HasFailure(); ++n, ++count) {
                SCOPED_TRACE(std::string(faults::name_of(static_cast<call_t>(call))) + " " +
                             std::to_string(n));
                const test::temp_dir_t folder;
                const std::string file = folder.path() + "/log.xml";
                ASSERT_TRUE(add_to_log(file));
                const std::string old = files_in(folder.path())["log.xml"];
                faults::only_below(folder.path());
                faults::arm(static_cast<call_t>(call), n, way);
                const bool saved = add_to_log(file);
                struck = faults::disarm();
                faults::only_below("");
                files_t files = files_in(folder.path());
                // Once more than before, or told, or what could not be read is kept aside.
                const bool broke_off = files.count("log.xml.damaged") != 0;
                const int times = times_added(files["log.xml"]);
                EXPECT_TRUE(broke_off ? times >= 1 : times == (saved ? 2 : 1)) << files["log.xml"];
                if (broke_off) {
                    EXPECT_EQ(old, files["log.xml.damaged"]);
                }
                EXPECT_TRUE(saved || files["log.xml"] == old) << files["log.xml"];
                EXPECT_TRUE(add_to_log(file)) << "the next attempt";
            }
        }
    std::printf("%d faults\n", count);
}

} // namespace
