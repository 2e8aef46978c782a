#include "preview_texts.h"

#include "commondlg3/text_utils.h"
#include "paths/shown_path.h"

#include <cctrl2/collection_controller.h>
#include <cfgmgr2/message_catalog.h>
#include <cpil/catalog.h>

#include <cmath>

namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;
using gen_helpers2::folder_state_t;

constexpr double megabyte = 1e6;
constexpr double little_space = 1000 * megabyte; // results of a busy program fill that in minutes

std::string analysis_name()
{
    const std::string type = cctrl2::ICollectionController::get()->getAnalysisType();
    const std::string key = "analysis_type." + type;
    const auto catalog = cfgmgr2::getMessageCatalog("commondlg");
    return catalog && catalog->has_message(key) ? translate_message(key) : type;
}

// In the units that desktops show, with a digit behind the comma where the number is small.
std::string size_text(double bytes)
{
    const char* key = catalog_key("size.megabytes");
    double size = bytes / megabyte;
    if (size >= 1000) {
        key = catalog_key("size.gigabytes");
        size /= 1000;
    }
    if (size >= 1000) {
        key = catalog_key("size.terabytes");
        size /= 1000;
    }
    constexpr double small = 10;
    size = size < small ? std::floor(size * 10) / 10 : std::floor(size);
    return translate_message(key, {{"size", size}});
}

} // namespace

std::string get_example(const std::string& name)
{
    return translate_message("pref.result_saving.example",
                             {{"default_dir", name},
                              {"analysis_type", analysis_name()},
                              {"extension", cctrl2::ICollectionController::get()->getResultExtension()}});
}

std::string sentence_about(folder_state_t state)
{
    switch (state) {
    case folder_state_t::not_a_folder:
        return translate_message("pref.result_saving.folder_is_file");
    case folder_state_t::broken_link:
        return translate_message("pref.result_saving.folder_is_broken_link");
    case folder_state_t::not_allowed:
        return translate_message("pref.result_saving.folder_not_writable");
    case folder_state_t::too_long:
        return translate_message("pref.result_saving.folder_too_long");
    case folder_state_t::no_path:
    case folder_state_t::usable:
        break;
    }
    return std::string();
}

std::string sentence_about_little_space(const folder_answer_t& answer)
{
    if (!answer.free_space || static_cast<double>(*answer.free_space) >= little_space)
        return std::string();
    return translate_message("pref.result_saving.little_space",
                             {{"space", size_text(static_cast<double>(*answer.free_space))}});
}

std::string get_outlook(const folder_answer_t& answer)
{
    const auto& question = answer.question;
    if (question.is_checked && (question.wrong || !question.trouble.empty()))
        return translate_message("pref.result_saving.used_instead", {{"dir", as_shown(answer.used)}});
    if (answer.state != folder_state_t::usable) // said at its field, where there is one
        return question.is_checked ? translate_message("pref.result_saving.not_saved")
                                   : sentence_about(answer.state);
    const std::string made =
        answer.is_there ? std::string() : translate_message("pref.result_saving.folder_made");
    std::string space;
    if (answer.free_space)
        space = translate_message("pref.result_saving.free_space",
                                  {{"space", size_text(static_cast<double>(*answer.free_space))}});
    if (!question.is_checked) // nothing else tells it
        if (const std::string little = sentence_about_little_space(answer); !little.empty())
            space = little;
    if (made.empty() || space.empty())
        return made + space;
    return translate_message("text.two_sentences", {{"first", made}, {"second", space}});
}

} // namespace commondlg3
