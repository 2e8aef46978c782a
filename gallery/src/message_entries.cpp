#include "message_entries.h"

#include "json_report.h"
#include "missing_resource.h"
#include "silenced_page.h"
#include "window_run.h"

#include <cfgmgr2/product_locations.h>
#include <commondlg3/message_center.h>
#include <commondlg3/message_options.h>
#include <commondlg3/text_utils.h>
#include <cpil/catalog.h>

#include <wx/utils.h>

#include <functional>
#include <string>

namespace gallery {
namespace {

using CPIL_2_18::i18n::catalog_key;
using nlohmann::json;

struct sample_keys_t
{
    const char* main;
    const char* supplemental;
};

sample_keys_t keys_of(message_sample_t sample)
{
    switch (sample) {
    case message_sample_t::warning:
        return {catalog_key("sample.main.warning"), catalog_key("sample.supplemental.warning")};
    case message_sample_t::success:
        return {catalog_key("sample.main.success"), catalog_key("sample.supplemental.success")};
    case message_sample_t::information:
        return {catalog_key("sample.main.information"), catalog_key("sample.supplemental.information")};
    case message_sample_t::progress:
        return {catalog_key("sample.main.progress"), catalog_key("sample.supplemental.progress")};
    case message_sample_t::error:
        break;
    }
    return {catalog_key("sample.main.error"), catalog_key("sample.supplemental.error")};
}

class check_box_t : public gen_helpers2::ref_counted_of_t<commondlg3::i_check_box_definition>
{
public:
    explicit check_box_t(const json& data)
        : m_label(get_string(data, "label", "")), m_checked(get_bool(data, "checked", false))
    {
    }

    std::string get_name() const override { return "gallery.message"; }
    bool get_default_checked() const override { return false; }
    void reset() override { m_checked = false; }
    bool is_checked() const override { return m_checked; }
    void set_checked(bool checked) override { m_checked = checked; }
    void commit() override { report_signal(message_object, "check_box.commit", m_checked); }
    std::string get_label() const override { return m_label; }

private:
    std::string m_label;
    bool m_checked;
};

json data_of(const commondlg3::message_window_t& window)
{
    json data = {{"main_message", window.main_message},
                 {"supplemental_message", window.supplemental_message},
                 {"details_message", window.details_message},
                 {"button_type", static_cast<int>(window.button_type)},
                 {"icon_type", static_cast<int>(window.icon_type)}};
    if (window.check_box)
        data["check_box"] = {{"label", window.check_box->get_label()},
                             {"checked", window.check_box->is_checked()}};
    return data;
}

commondlg3::message_answer_t answer_from(const json& data, const char* name)
{
    commondlg3::message_answer_t answer;
    if (data.is_object() && data.contains(name)) {
        answer.label = get_string(data[name], "label", "");
        answer.destructive = get_bool(data[name], "destructive", false);
    }
    return answer;
}

commondlg3::message_options_t options_from(const json& data)
{
    using commondlg3::message_options_t;
    message_options_t options;
    options.first = answer_from(data, "first");
    options.second = answer_from(data, "second");
    if (get_int(data, "default_answer", 1) == 2)
        options.default_answer = message_options_t::default_answer_t::second;
    options.offers_copy = get_bool(data, "offers_copy", false);
    options.offers_report = get_bool(data, "offers_report", false);
    options.get_report = [] {
        return cfgmgr2::IProductLocations::get()->get_product_name() + ", " +
               wxGetOsDescription().utf8_string();
    };
    if (get_bool(data, "shows_in_log", false))
        options.show_in_log = [] { report_signal(message_object, "show_in_log", true); };
    return options;
}

// One that is silenced does not open, and one without its layout answers as the library does.
int run_message(const commondlg3::message_window_t& window, wxWindow* parent,
                const std::function<int()>& show)
{
    return window_run_t::run(message_object, parent, {}, [&](window_run_t& run) {
        const bool silenced = window.check_box && window.check_box->is_checked();
        const layout_t layout = library_layout(message_object);
        if (!silenced && check_resource(layout.file, layout.object, parent))
            run.show(show);
        else
            run.set_result(show());
        run.set_data(data_of(window));
    });
}

} // namespace

json sample_data(message_sample_t sample)
{
    const sample_keys_t keys = keys_of(sample);
    json data = {{"icon_type", static_cast<int>(sample)},
                 {"button_type", 0},
                 {"main_message", text(keys.main)},
                 {"supplemental_message", text(keys.supplemental)}};
    if (sample == message_sample_t::error)
        data["details_message"] = text("sample.details");
    return data;
}

json with_check_box(json data)
{
    data["check_box"] = {{"name", "gallery.samples_lost"}};
    return data;
}

json with_named_buttons(json data)
{
    data.update({{"button_type", 3},
                 {"main_message", text("sample.main.delete")},
                 {"supplemental_message", text("sample.supplemental.delete")},
                 {"first", {{"label", text("sample.delete")}, {"destructive", true}}},
                 {"second", {{"label", text("sample.keep")}}}});
    return data;
}

json with_support(json data)
{
    std::string details;
    for (int line = 1; line <= 12; ++line)
        details += "#" + std::to_string(line) + "  " + get_string(data, "details_message", "") + "\n";
    data.update({{"details_message", details},
                 {"offers_copy", true},
                 {"offers_report", true},
                 {"shows_in_log", true}});
    return data;
}

json storm_data()
{
    const json lost = sample_data(message_sample_t::warning);
    json question = with_named_buttons(lost);
    return {{"messages",
             {lost, sample_data(message_sample_t::error), lost, lost,
              sample_data(message_sample_t::information), question}}};
}

json with_long_text(json data)
{
    std::string lines;
    const std::string sentence = get_string(data, "supplemental_message", "");
    for (int line = 1; line <= 300; ++line)
        lines += std::to_string(line) + "  " + sentence.substr(0, sentence.find('\n')) + "\n";
    data["supplemental_message"] = lines;
    return data;
}

json with_long_word(json data)
{
    std::string word;
    while (word.size() < 10000)
        word += "0123456789abcdefghijklmnopqrstuvwxyz";
    data["supplemental_message"] = word.substr(0, 10000);
    return data;
}

commondlg3::message_window_t message_from(const json& data)
{
    using commondlg3::message_window_t;
    message_window_t window;
    window.main_message = get_string(data, "main_message", "");
    window.supplemental_message = get_string(data, "supplemental_message", "");
    window.details_message = get_string(data, "details_message", "");
    window.button_type = static_cast<message_window_t::button_type_t>(get_int(data, "button_type", 0));
    window.icon_type = static_cast<message_window_t::icon_types_t>(get_int(data, "icon_type", 0));
    if (data.is_object() && data.contains("check_box") && data["check_box"].is_object()) {
        const json& box = data["check_box"];
        const std::string name = get_string(box, "name", "");
        if (name.empty())
            window.check_box = new check_box_t(box);
        else
            window.check_box = load_silenced_messages().make_check_box(name, window);
    }
    return window;
}

int open_message(const json& data, wxWindow* parent)
{
    const auto window = message_from(data);
    const auto options = options_from(data);
    return run_message(window, parent, [&] { return commondlg3::show_modal(window, options, parent); });
}

// All but the last are raised, each of which reports its answer; the last is asked.
int open_message_center(const json& data, wxWindow* parent)
{
    static auto& center = *new commondlg3::message_center_t; // some messages may outlast the call
    return window_run_t::run(center_object, parent, {library_layout(center_object)}, [&](window_run_t& run) {
        const json messages =
            data.is_object() && data.contains("messages") ? data["messages"] : json::array();
        if (messages.empty())
            return;
        for (std::size_t i = 0; i + 1 < messages.size(); ++i)
            center.raise(
                message_from(messages[i]),
                [i](int answer) { report_signal(center_object, "answered " + std::to_string(i), answer); },
                options_from(messages[i]));
        run.show([&] { return center.ask(message_from(messages.back()), options_from(messages.back())); });
    });
}

int open_message_box(const json& data, wxWindow* parent)
{
    const auto window = message_from(data);
    return run_message(window, parent, [&] {
        return commondlg3::show_msg_box(window.main_message, window.supplemental_message, window.icon_type,
                                        parent);
    });
}

} // namespace gallery
