// How fast the in-place message control is, beside the toolkit's virtual list, which neither wraps nor draws
// icons.
//
// usage: log_bench [[close|text] LINES]; with "close" only how the window is closed, with "text" only how it
// is saved as a text
//
// Lines of 80 characters come from one worker, every fifth has 300; then 200 scrolls with a painted frame
// each; then a resize by 100 pixels. The window is 800 by 600. Times are those inside the event loop's
// dispatches where they are frames, and wall time otherwise; "late" is how much a timer of 5 ms came late
// meanwhile.
#include "log_stage.h"

#include <cfgmgr2/message_catalog.h>
#include <cfgmgr2/product_locations.h>
#include <gen_helpers2/file.h>
#include <gen_helpers2/variant_bag_file.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/listctrl.h>
#include <wx/timer.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace {

// The toolkit's list of the same lines, as its users build one: they are drawn from where they are kept.
class list_t : public wxListCtrl
{
public:
    explicit list_t(wxWindow* parent)
        : wxListCtrl(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                     wxLC_REPORT | wxLC_VIRTUAL | wxLC_NO_HEADER)
    {
        SetFont(wx_helpers1::ui_settings_t::get()->get_font(wx_helpers1::ui_font::text));
        InsertColumn(0, "", wxLIST_FORMAT_LEFT, 780);
    }
    std::vector<std::string> lines;

private:
    wxString OnGetItemText(long item, long) const override
    {
        const std::string& line = lines[static_cast<std::size_t>(item)];
        return wxString::FromUTF8(line.data(), line.size());
    }
};

double run_list(int count)
{
    stage_t stage;
    auto* list = new list_t(stage.frame());
    stage.show(list);
    std::vector<std::string> pending;
    std::mutex mutex;
    bool posted = false;
    const double begin = now();
    std::thread worker([&] {
        for (int i = 0; i < count; ++i) {
            std::string line = make_line(i);
            bool first;
            {
                std::lock_guard<std::mutex> lock(mutex);
                pending.push_back(std::move(line));
                first = !posted;
                posted = true;
            }
            if (first)
                wx_helpers1::tasks::Scheduler::Post([&] {
                    std::vector<std::string> taken;
                    {
                        std::lock_guard<std::mutex> guard(mutex);
                        taken.swap(pending);
                        posted = false;
                    }
                    list->lines.insert(list->lines.end(), std::make_move_iterator(taken.begin()),
                                       std::make_move_iterator(taken.end()));
                    list->SetItemCount(static_cast<long>(list->lines.size()));
                    list->EnsureVisible(static_cast<long>(list->lines.size()) - 1);
                });
        }
    });
    stage.run_until([&] { return list->lines.size() == static_cast<std::size_t>(count); });
    const long frames = stage.frames;
    list->Refresh();
    stage.run_until([&] { return stage.frames > frames; });
    const double took = now() - begin;
    worker.join();
    return took;
}

void run_log(int count, double list_seconds)
{
    stage_t stage;
    auto* control = new inplace_ctrl_t(stage.frame(), false);
    stage.show(control);
    vdxcfrw7::CEventLog& log = control->get_log();
    const auto tag = control->add_message(make_message("Reading"), {});
    msngr2::IMessenger* messenger = control->get_messenger(tag);
    const auto& lines = log.GetElements()[0]->GetLines();
    stage.settle(0.1);

    malloc_trim(0);
    const double resident = resident_bytes();
    std::vector<double> late;
    wxTimer beat;
    double last_beat = now();
    beat.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
        const double t = now();
        late.push_back(std::max(0.0, t - last_beat - 0.005));
        last_beat = t;
    });
    beat.Start(5);
    stage.longest = 0;
    double text_bytes = 0;
    const double begin = now();
    std::thread worker([&] {
        for (int i = 0; i < count; ++i) {
            const std::string line = make_line(i);
            text_bytes += static_cast<double>(line.size());
            messenger->say(severity_of(i), line.c_str());
        }
    });
    stage.run_until([&] { return lines.size() == static_cast<std::size_t>(count); });
    const double in = now() - begin;
    const long frames = stage.frames;
    control->get_log().GetWindow()->Refresh();
    stage.run_until([&] { return stage.frames > frames && !log.HasWork(); });
    const double painted = now() - begin;
    worker.join();
    stage.run_until([&] { return log.GetState().exact; });
    const double settled = now() - begin;
    beat.Stop();
    std::printf("-- %d lines\n", count);
    print("all lines in", in, "s");
    print("last one painted", painted, "s");
    print("all heights exact", settled, "s");
    if (list_seconds > 0)
        print("  times the toolkit's virtual list", settled / list_seconds, "");
    print("event loop late, p99", quantile(late, 0.99) * 1e3, "ms");
    print("event loop late, most", quantile(late, 1) * 1e3, "ms");
    print("longest dispatch", stage.longest * 1e3, "ms");
    malloc_trim(0);
    print("resident bytes a line beyond its text", (resident_bytes() - resident - text_bytes) / count,
          "bytes");

    std::vector<double> page;
    const double height = static_cast<double>(log.GetState().height);
    for (int i = 1; i <= 200; ++i)
        page.push_back(stage.frame_of([&] { log.ScrollTo(static_cast<std::int64_t>(height * i / 201)); }));
    print("page scroll to its frame, p50", quantile(page, 0.5) * 1e3, "ms");
    print("page scroll to its frame, p99", quantile(page, 0.99) * 1e3, "ms");

    for (int step : {100, -100}) {
        const wxSize size = stage.frame()->GetClientSize();
        const std::int64_t width = log.GetWindow()->GetClientSize().x;
        const double start = now();
        stage.longest = 0;
        stage.frame()->SetClientSize(size.x + step, size.y);
        double busy = now() - start;
        while (log.GetWindow()->GetClientSize().x == width)
            busy += stage.iterate();
        const long seen = stage.frames;
        while (stage.frames == seen)
            busy += stage.iterate();
        print("resize, work until the first right frame", busy * 1e3, "ms");
        stage.run_until([&] { return log.GetState().exact; });
        print("resize, all heights exact", (now() - start) * 1e3, "ms");
        print("resize, longest dispatch", stage.longest * 1e3, "ms");
    }

    // The same number of lines again costs what it cost at first.
    const auto time_of_10000 = [&](inplace_ctrl_t& where, std::size_t entry,
                                   inplace_ctrl_t::tag_t entry_tag) {
        msngr2::IMessenger* to = where.get_messenger(entry_tag);
        const auto& shown = where.get_log().GetElements()[entry]->GetLines();
        const std::size_t wanted = shown.size() + 10000;
        const double start = now();
        for (int i = 0; i < 10000; ++i)
            to->say(severity_of(i), make_line(i).c_str());
        stage.run_until([&] { return shown.size() == wanted; });
        return now() - start;
    };
    std::vector<double> last, first;
    for (int i = 0; i < 7; ++i) {
        last.push_back(time_of_10000(*control, 0, tag));
        stage_t other;
        auto* empty = new inplace_ctrl_t(other.frame(), false);
        other.show(empty);
        first.push_back(time_of_10000(*empty, 0, empty->add_message(make_message("x"), {})));
    }
    print("last 10,000 lines / first 10,000", quantile(last, 0.5) / quantile(first, 0.5), "");
    double filter = now();
    log.SetFilter(msngr2::sev_error, "channel");
    stage.run_until([&] { return !log.HasWork(); });
    print("filter by severity and text", (now() - filter) * 1e3, "ms");
}

void run_entries(int count)
{
    stage_t stage;
    auto* control = new inplace_ctrl_t(stage.frame(), false);
    stage.show(control);
    commondlg3::standard_message_t::ptr_t message(new commondlg3::standard_message_t);
    message->picture = message->get_icon_by_type(commondlg3::standard_message_t::icon_types_t::warning);
    message->caption = "Some samples were lost";
    message->message =
        "The disk could not keep up, and <b>about 2%</b> of the samples were not written. To keep all "
        "samples, choose a <u>longer</u> interval.";
    message->set_buttons(commondlg3::standard_message_t::standard_buttons_t::yes_no);
    std::printf("-- %d entries with HTML body, icon and buttons\n", count);
    double begin = now();
    for (int i = 0; i < count; ++i)
        control->add_message(message, {});
    print("added", now() - begin, "s");
    stage.settle(0.1);
    std::vector<double> page;
    vdxcfrw7::CEventLog& log = control->get_log();
    const double height = static_cast<double>(log.GetState().height);
    for (int i = 1; i <= 200; ++i)
        page.push_back(stage.frame_of([&] { log.ScrollTo(static_cast<std::int64_t>(height * i / 201)); }));
    print("page scroll to its frame, p50", quantile(page, 0.5) * 1e3, "ms");
    print("page scroll to its frame, p99", quantile(page, 0.99) * 1e3, "ms");
    begin = now();
    control->clear();
    print("cleared", now() - begin, "s");
}

void run_file(int count)
{
    stage_t stage;
    auto* control = new inplace_ctrl_t(stage.frame(), false);
    stage.show(control);
    const auto tag = control->add_message(make_message("Reading"), {});
    msngr2::IMessenger* messenger = control->get_messenger(tag);
    double text_bytes = 0;
    for (int i = 0; i < count; ++i) {
        const std::string line = make_line(i);
        text_bytes += static_cast<double>(line.size());
        messenger->say(severity_of(i), line.c_str());
    }
    stage.settle(0.2);
    std::printf("-- saving and loading %d lines\n", count);
    malloc_trim(0);
    double resident = resident_bytes();
    double begin = now();
    gen_helpers2::variant_bag_t bag;
    control->save(bag);
    const gen_helpers2::path_t file("/tmp/log_bench_" + std::to_string(getpid()) + ".xml");
    if (save_variant_bag(bag, file).failed())
        std::printf("NOT SAVED\n");
    print("saved to a file", now() - begin, "s");
    print("  memory, times the text", (resident_bytes() - resident) / text_bytes, "");
    control->clear();
    bag.clear();
    malloc_trim(0);
    begin = now();
    gen_helpers2::variant_bag_t read;
    if (load_variant_bag(file, read).failed())
        std::printf("NOT READ\n");
    control->load(read);
    stage.run_until([&] { return log_size(*control) == static_cast<std::size_t>(count); });
    print("loaded and shown", now() - begin, "s");
    unlink(file.as_string().c_str());
}

// A log is saved as a text while its window lives, beside a plain write of the same bytes.
void run_text(int count)
{
    stage_t stage;
    auto* control = new inplace_ctrl_t(stage.frame(), false);
    stage.show(control);
    msngr2::IMessenger* messenger = control->get_messenger(control->add_message(make_message("Reading"), {}));
    for (int i = 0; i < count; ++i)
        messenger->say(severity_of(i), make_line(i).c_str());
    stage.run_until([&] { return log_size(*control) == static_cast<std::size_t>(count); });
    stage.settle(0.2);
    std::printf("-- saving %d lines as a text\n", count);
    const gen_helpers2::path_t file("/tmp/log_bench_" + std::to_string(getpid()) + ".txt");
    using commondlg3::text_format_t;
    for (const auto& [name, format] :
         {std::pair("plain", text_format_t::plain), std::pair("page", text_format_t::html),
          std::pair("JSON lines", text_format_t::json_lines)}) {
        stage.longest = 0;
        bool saved = false;
        double begin = now();
        control->save_as(file, format, {}, [&](const gen_helpers2::error_code_t& result) {
            if (result.failed())
                std::printf("NOT SAVED: %s\n", result.as_string().c_str());
            saved = true;
        });
        print("begun", (now() - begin) * 1e3, "ms");
        stage.run_until([&] { return saved; });
        const double took = now() - begin;
        std::string bytes;
        if (gen_helpers2::read_whole_file(file, bytes, std::size_t(8) << 30).failed())
            std::printf("NOT READ\n");
        unlink(file.as_string().c_str());
        begin = now();
        if (gen_helpers2::write_whole_file(file, bytes).failed())
            std::printf("NOT WRITTEN\n");
        std::printf("%s: %.0f MB/s\n", name, static_cast<double>(bytes.size()) / took / 1e6);
        print("  times a plain write of the same bytes", took / (now() - begin), "");
        print("  longest dispatch", stage.longest * 1e3, "ms");
        unlink(file.as_string().c_str());
    }
}

// A window with very many lines is closed, and what it held is kept.
void run_close(int count)
{
    constexpr int threads = 8;
    auto stage = std::make_unique<stage_t>();
    auto* control = new inplace_ctrl_t(stage->frame(), false);
    stage->show(control);
    std::vector<std::thread> workers;
    double begin = now();
    for (int i = 0; i < threads; ++i) {
        msngr2::IMessenger* messenger =
            control->get_messenger(control->add_message(make_message("Reading"), {}));
        workers.emplace_back([messenger, count] {
            for (int line = 0; line < count / threads; ++line)
                messenger->say(severity_of(line), make_line(line).c_str());
        });
    }
    stage->run_until(
        [&] { return log_size(*control) == static_cast<std::size_t>(count / threads * threads); });
    for (std::thread& worker : workers)
        worker.join();
    std::printf("-- closing a window with %d lines\n", count);
    print("said by 8 threads, and shown", now() - begin, "s");
    double most = resident_bytes();
    const double before = most;
    const gen_helpers2::path_t file("/tmp/log_bench_" + std::to_string(getpid()) + ".xml");
    std::atomic<bool> saved{false};
    begin = now();
    control->take_contents().save_later(file, [&](const gen_helpers2::error_code_t& result) {
        if (result.failed())
            std::printf("NOT SAVED: %s\n", result.as_string().c_str());
        saved = true;
    });
    stage.reset();
    print("closed", (now() - begin) * 1e3, "ms");
    while (!saved) {
        most = std::max(most, resident_bytes());
        usleep(1000);
    }
    print("kept by a worker", now() - begin, "s");
    print("memory on top meanwhile", (most - before) / 1e6, "MB");
    unlink(file.as_string().c_str());
}

void find_in(stage_t& stage, vdxcfrw7::CEventLog& log, const char* text, bool expression)
{
    std::printf("-- finding \"%s\"%s\n", text, expression ? ", an expression" : "");
    stage.settle(0.1);
    const long before = stage.frames;
    stage.longest = 0;
    const double begin = now();
    log.SetFind(text, {false, false, expression});
    stage.run_until([&] { return stage.frames != before; });
    print("first highlight", (now() - begin) * 1e3, "ms");
    stage.run_until([&] { return log.GetFindState().complete; });
    print("all counted", now() - begin, "s");
    print("  of them", static_cast<double>(log.GetFindState().count), "");
    print("longest dispatch", stage.longest * 1e3, "ms");
    log.SetFind("", {});
}

void run_find(int count)
{
    stage_t stage;
    auto* control = new inplace_ctrl_t(stage.frame(), false);
    stage.show(control);
    const auto tag = control->add_message(make_message("Reading"), {});
    for (int i = 0; i < count; ++i)
        control->get_messenger(tag)->say(severity_of(i), make_line(i).c_str());
    stage.settle(0.3);
    find_in(stage, control->get_log(), "channel", false);
    find_in(stage, control->get_log(), "e", false);
    find_in(stage, control->get_log(), "no such text", false);
    find_in(stage, control->get_log(), "chan+el val", true);
}

// A storm of one line, and one that is collapsed afterwards.
void run_repeats(int count)
{
    for (const bool at_once : {true, false}) {
        stage_t stage;
        auto* control = new inplace_ctrl_t(stage.frame(), false);
        stage.show(control);
        auto& log = control->get_log();
        log.SetCollapse(at_once);
        const auto tag = control->add_message(make_message("Reading"), {});
        const std::string line = make_line(1);
        malloc_trim(0);
        const double resident = resident_bytes();
        double begin = now();
        for (int i = 0; i < count; ++i)
            control->get_messenger(tag)->say(msngr2::sev_none, line.c_str());
        if (!at_once) {
            stage.settle(0.3);
            begin = now();
            log.SetCollapse(true);
        }
        stage.run_until([&] {
            return log_size(*control) == 1 &&
                   log.GetElements()[0]->GetLines().get_count(0) == static_cast<std::uint64_t>(count);
        });
        std::printf("-- %d equal lines, %s\n", count,
                    at_once ? "collapsed as they come" : "collapsed afterwards");
        print("one line", now() - begin, "s");
        if (at_once)
            print("memory", (resident_bytes() - resident) / 1e6, "MB");
    }
}

// Very many logs in one process.
void run_many(int count)
{
    constexpr int logs = 50;
    stage_t stage;
    std::vector<inplace_ctrl_t*> controls;
    for (int i = 0; i < logs; ++i)
        controls.push_back(new inplace_ctrl_t(stage.frame(), false));
    stage.show(controls[0]);
    malloc_trim(0);
    const double resident = resident_bytes();
    double text_bytes = 0;
    for (inplace_ctrl_t* control : controls) {
        const auto tag = control->add_message(make_message("Reading"), {});
        for (int i = 0; i < count; ++i) {
            const std::string line = make_line(i);
            text_bytes += static_cast<double>(line.size());
            control->get_messenger(tag)->say(severity_of(i), line.c_str());
        }
        stage.run_until([&] { return log_size(*control) == static_cast<std::size_t>(count); });
    }
    stage.settle(0.3);
    malloc_trim(0);
    std::printf("-- %d logs of %d lines\n", logs, count);
    print("resident bytes a line beyond its text", (resident_bytes() - resident - text_bytes) / logs / count,
          "bytes");
}

void run_all(int count)
{
    const double list = run_list(count);
    print("the toolkit's virtual list, last one painted", list, "s");
    run_log(count, list);
    run_entries(10000);
    run_file(100000);
    run_text(count);
    run_find(count);
    run_repeats(count);
    run_many(count / 10);
}

class app_t : public wxApp
{
public:
    bool OnInit() override { return true; }
    bool OnCmdLineParsed(wxCmdLineParser&) override { return true; }
    void OnInitCmdLine(wxCmdLineParser&) override {}

    int OnRun() override
    {
        wxGUIEventLoop loop;
        wxEventLoopActivator active(&loop);
        auto product = std::make_shared<cfgmgr2::product_locations_t>();
        product->resource_directory = gen_helpers2::path_t(RESOURCE_DIR);
        product->locale_directory = gen_helpers2::path_t(LOCALE_DIR);
        cfgmgr2::IProductLocations::set(product);
        cfgmgr2::set_language("en");
        wx_helpers1::tasks::Scheduler::Initialize();
        wx_helpers1::ui_settings_t::initialize();
        const bool only_close = argc > 2 && wxString(argv[1]) == "close";
        const int count = argc > 1 ? std::atoi(wxString(argv[argc - 1]).utf8_str()) : 100000;
        const bool only_text = argc > 2 && wxString(argv[1]) == "text";
        if (only_text)
            run_text(count);
        else if (!only_close)
            run_all(count);
        if (!only_text)
            run_close(count);
        wx_helpers1::tasks::Scheduler::Shutdown();
        wx_helpers1::ui_settings_t::shutdown();
        return 0;
    }
};

} // namespace

int main(int argc, char** argv)
{
    wxApp::SetInitializerFunction([]() -> wxAppConsole* { return new app_t; });
    return wxEntry(argc, argv);
}
