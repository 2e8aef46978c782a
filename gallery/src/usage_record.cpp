#include "usage_record.h"

#include "preferences_page.h"

#include <cfgmgr2/message_catalog.h>
#include <cfgmgr2/product_locations.h>
#include <commondlg3/settings_file.h>
#include <gen_helpers2/file.h>
#include <gen_helpers2/log.h>

#include <nlohmann/json.hpp>

#include <wx/utils.h>
#include <wx/version.h>

#include <sys/stat.h>

#include <filesystem>
#include <map>
#include <optional>
#include <utility>

namespace gallery {
namespace {

using user_consent_t = opt_in_pp_t::user_consent_t;

constexpr char child_name[] = "usage_data";
constexpr char value_name[] = "consent";

std::map<std::string, int>& opened()
{
    static std::map<std::string, int> counts;
    return counts;
}

gen_helpers2::path_t record_file()
{
    return cfgmgr2::IProductLocations::get()->get_config_directory() / "usage_data.json";
}

class record_keeper_t : public commondlg3::usage_data_keeper_t
{
public:
    record_keeper_t(gen_helpers2::path_t file, std::function<gen_helpers2::error_code_t()> withdraw)
        : m_file(std::move(file)), m_withdraw(std::move(withdraw))
    {
    }
    std::optional<written_t> read_last_written() const override
    {
        struct stat found;
        std::string text;
        if (::stat(m_file.as_string().c_str(), &found) != 0 ||
            gen_helpers2::read_whole_file(m_file, text).failed())
            return std::nullopt;
        return written_t{found.st_mtime, text};
    }
    gen_helpers2::error_code_t withdraw() override { return m_withdraw(); }

private:
    gen_helpers2::path_t m_file; // asked for on another thread
    std::function<gen_helpers2::error_code_t()> m_withdraw;
};

} // namespace

void count_opened(const std::string& object)
{
    ++opened()[object];
}

std::string get_usage_record()
{
    const nlohmann::ordered_json record = {
        {"product", cfgmgr2::IProductLocations::get()->get_product_name()},
        {"version", PRODUCT_VERSION},
        {"system", wxGetOsDescription().utf8_string()},
        {"toolkit", wxGetLibraryVersionInfo().GetVersionString().utf8_string()},
        {"language", cfgmgr2::get_language()},
        {"windows_opened", opened()},
    };
    constexpr int indent = 2;
    return record.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

user_consent_t get_consent(cfgmgr2::IPropertyStorage& preferences)
{
    if (!preferences.has_child(child_name))
        return user_consent_t::not_decided;
    const auto value = preferences.get_child(child_name)->get_value(value_name);
    const int number = value.can_get<int>() ? value.get<int>() : 0;
    return number == 1 || number == 2 ? static_cast<user_consent_t>(number) : user_consent_t::not_decided;
}

void set_consent(cfgmgr2::IPropertyStorage& preferences, user_consent_t consent)
{
    preferences.get_child(child_name)->set_value(value_name, static_cast<int>(consent));
}

gen_helpers2::error_code_t remove_usage_record()
{
    std::error_code error; // none when there is no such file
    std::filesystem::remove(record_file().as_filesystem_path(), error);
    return error ? gen_helpers2::error_code_t::io_error(record_file().as_string() + ": " + error.message())
                 : gen_helpers2::error_code_t();
}

std::shared_ptr<commondlg3::usage_data_keeper_t>
make_usage_data_keeper(std::function<gen_helpers2::error_code_t()> withdraw)
{
    return std::make_shared<record_keeper_t>(record_file(), std::move(withdraw));
}

user_consent_t load_consent(gen_helpers2::error_code_t& result)
{
    commondlg3::settings_file_t store(preferences_file);
    result = store.load();
    return get_consent(*store.get());
}

gen_helpers2::error_code_t save_consent(user_consent_t consent)
{
    commondlg3::settings_file_t store(preferences_file);
    if (const auto read = store.load(); read.failed()) // the file is kept aside by saving
        gen_helpers2::log_warning("gallery", read.as_string());
    set_consent(*store.get(), consent);
    const auto result = store.save();
    if (result.succeeded() && consent != user_consent_t::given)
        return remove_usage_record();
    return result;
}

void report_usage()
{
    gen_helpers2::error_code_t result;
    if (load_consent(result) == user_consent_t::given) {
        result = gen_helpers2::write_whole_file(record_file(), get_usage_record() + "\n");
        if (result.failed())
            gen_helpers2::log_warning("gallery", "the usage record was not kept: " + result.as_string());
    } else if (result.succeeded()) {
        if (const auto removed = remove_usage_record(); removed.failed())
            gen_helpers2::log_warning("gallery", "the usage record was not removed: " + removed.as_string());
    }
}

} // namespace gallery
