/// What the product that the gallery plays would report of its use, and whether it may.
#pragma once

#include <cfgmgr2/property_storage.h>
#include <commondlg3/opt_in_pp.h>
#include <gen_helpers2/error_code.h>

#include <functional>
#include <memory>
#include <string>

namespace gallery {

using commondlg3::opt_in_pp_t;

/// Counts a window that was opened, by its object.
void count_opened(const std::string& object);
/// The whole record, as text.
std::string get_usage_record();

/// The user's stored answer; not decided when there is none, or none that can be read.
opt_in_pp_t::user_consent_t load_consent(gen_helpers2::error_code_t& result);
/// Keeps the answer. Whoever does not agree is forgotten at once: the record that was left is taken away.
[[nodiscard]] gen_helpers2::error_code_t save_consent(opt_in_pp_t::user_consent_t consent);

/// The same in preferences that are open.
opt_in_pp_t::user_consent_t get_consent(cfgmgr2::IPropertyStorage& preferences);
/// Puts it there, for whoever saves them; then the record of whoever does not agree must be taken away.
void set_consent(cfgmgr2::IPropertyStorage& preferences, opt_in_pp_t::user_consent_t consent);
gen_helpers2::error_code_t remove_usage_record();

/// The record that is there, for the page about consent.
std::shared_ptr<commondlg3::usage_data_keeper_t>
make_usage_data_keeper(std::function<gen_helpers2::error_code_t()> withdraw);

/// At the product's end: reports the record if the user agreed. The gallery reports to nobody: it leaves the
/// record in a file of the configuration directory, which is taken away when the user does not agree.
void report_usage();

} // namespace gallery
