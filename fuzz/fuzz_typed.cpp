// What is typed, pasted or kept about names, paths, editors and features: filters leave nothing that they
// are to filter, and what was taken is the same when it is given again.
#include "check.h"

#include <cfgmgr2/property_storage.h>
#include <commondlg3/editor_data.h>
#include <commondlg3/feature_config.h>
#include <commondlg3/name_chars.h>
#include <commondlg3/path_info.h>
#include <commondlg3/result_saving_pp.h>
#include <commondlg3/search_dirs_data.h>
#include <gen_helpers2/program.h>
#include <gen_helpers2/strings.h>
#include <rdmgr2/result_directory_manager.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

using namespace commondlg3;

namespace {

void try_names(const std::string& text)
{
    std::string file = text;
    std::string folder = text;
    check(replace_disabled_chars(file, disabled_file_chars) == (file.size() != text.size()));
    replace_disabled_chars_in_folder(folder);
    check(check_string_for_disabled_symbols(file, disabled_file_chars));
    check(check_string_for_disabled_symbols(folder, disabled_folder_chars));
    check(check_folder_name_for_chars(folder) == !gen_helpers2::path_t(folder).is_empty());
    const int index = static_cast<int>(text.size()) - 1;
    std::string disabled = create_disabled_char_string(index) + create_disabled_folder_char_string(index);
    check(disabled.empty() || (replace_disabled_chars(disabled) && disabled.empty()));

    std::string name_template = text;
    result_saving_pp_t::filter_result_template(name_template);
    check(!rdmgr2::ResultDirectoryManager::validateResultDirectoryPattern(name_template));
    check(!result_saving_pp_t::filter_result_template(name_template));
    check(!rdmgr2::ResultDirectoryManager::fillResultDirectoryPattern(name_template, 12345).empty());
}

void try_paths(const std::string& text)
{
    const path_info_t path(text);
    const path_info_t again(path.as_string());
    check(again.as_string() == path.as_string() && again.is_ok() == path.is_ok());
    const path_info_t copy(path.extract_path());
    check(copy.extract_path() == path.extract_path());
    check(!path.is_file() || !path.is_directory());
    check(!path.is_directory() || (path.is_exists() && path.is_ok()));
    check(path.check_extension({path.get_extension()}));
    // Names of files are looked at without making paths of them, where they are usual.
    const std::string extension = gen_helpers2::path_t(text).get_ext(false);
    if (extension.find_first_of(std::string("*\0", 2)) == std::string::npos)
        check(language_info::get_language(text) == language_info::get_language("x." + extension));
    const auto language = language_info::get_language(text);
    for (const std::string& known : language_info::get_extensions(language))
        check(language_info::get_language("x." + known) == language);

    const std::string typed = typed_dir(text);
    // Blanks that a path in another form has at its ends belong to a name, until it is typed anew.
    if (gen_helpers2::trim(typed) == typed)
        check(typed_dir(typed) == typed);
    const std::vector<std::string> dirs = split_dirs(text);
    std::vector<listed_dir_t> listed;
    for (const std::string& dir : dirs) {
        check(!dir.empty());
        listed.push_back({dir, dir.size() % 2 == 0, examine_dir(dir)});
    }
    const std::vector<dir_mark_t> marks = mark_dirs(listed);
    for (std::size_t i = 0; i < marks.size(); ++i)
        check(marks[i].other <= i &&
              (marks[i].kind != dir_mark_t::kind_t::duplicate || dirs[marks[i].other] == dirs[i]));
}

void try_commands(const std::string& text)
{
    std::vector<std::string> words;
    std::vector<std::string> again;
    if (gen_helpers2::split_command_line(text, words))
        check(gen_helpers2::split_command_line(gen_helpers2::join_command_line(words), again) &&
              again == words);
}

// Preferences, with the editors in them.
void try_editors(const std::string& text)
{
    const gen_helpers2::path_t file(write_scratch("preferences.xml", text));
    gen_helpers2::error_code_t result;
    const auto storage = cfgmgr2::open_property_storage(file, result);
    editor_data_t first;
    check(first.load_storage_info(storage) && first.save_storage_info(storage));
    check(storage->save().succeeded());
    const auto again = cfgmgr2::open_property_storage(file, result);
    check(result.succeeded() && again->to_bag() == storage->to_bag());
    editor_data_t second;
    second.load_storage_info(again);
    gen_helpers2::variant_bag_t saved;
    gen_helpers2::variant_bag_t saved_again;
    first.save(saved);
    second.save(saved_again);
    check(saved == saved_again);
}

void try_features(const std::string& text)
{
    const gen_helpers2::path_t folder(scratch_folder());
    write_scratch("evaluation_features.cfg", text);
    write_scratch("active_evaluation_features.cfg", text);
    translated_feature_list_t list(folder, "fuzz");
    list.load();
    active_features_config_impl_t active(folder);
    active.load();
    check(static_cast<int>(active.get_env_variables().size()) <= list.get_count());
    for (int i = -1; i <= list.get_count(); ++i)
        active.turn_on(list.get_feature(i));
    check(active.save());
    active_features_config_impl_t again(folder);
    again.load();
    check(again.get_env_variables() == active.get_env_variables());
    for (int i = 0; i < list.get_count(); ++i)
        check(again.is_turned_on(list.get_feature(i)));
    active.clear();
    check(active.get_env_variables().empty());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    try_names(text);
    try_paths(text);
    try_commands(text);
    if (size && text[0] == '<') {
        try_editors(text);
        try_features(text);
    }
    return 0;
}
