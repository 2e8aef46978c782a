#include "commondlg3/inplace_message.h"

#include "commondlg3/image_loader.h"
#include "commondlg3/text_utils.h"

#include "saved_keys.h"
#include "xpm.h"

#include <cpil/catalog.h>
#include <gen_helpers2/assertion.h>

#include <algorithm>

namespace commondlg3 {
namespace {

constexpr char inplace_message_unit[] = "inplace_ctrl";

bool read_text(const gen_helpers2::variant_bag_t& bag, const char* key, std::string& text)
{
    const auto found = bag.find_text(key);
    if (found)
        text = *found;
    else
        GH2_ASSERT_TEXT(!bag.find_value(key), "can_get<const char*>()", inplace_message_unit);
    return found.has_value();
}

} // namespace

header_t::~header_t() = default;

gen_helpers2::error_code_t message_t::save(gen_helpers2::variant_bag_t& bag) const
{
    bag.put(saved::message, message);
    bag.put(saved::caption, caption);
    if (picture.is_still() && !picture.is_empty())
        bag.put(saved::image, image_to_xpm(picture.get_still().getImage(true)));
    return {};
}

gen_helpers2::error_code_t message_t::load(const gen_helpers2::variant_bag_t& bag)
{
    read_text(bag, saved::message, message);
    read_text(bag, saved::caption, caption);
    std::string xpm;
    if (read_text(bag, saved::image, xpm))
        picture = wx_helpers1::wxStaticPicture::from_image(image_from_xpm(xpm));
    return {};
}

const message_button_t& message_t::get_button(unsigned int index) const
{
    static const message_button_t none(0, std::string(), false);
    return index < buttons.size() ? buttons[index] : none;
}

void interactive_message_t::add_button(int id, const std::string& text)
{
    buttons.emplace_back(id, text, false);
    if (default_button == -1) {
        default_button = 0;
        buttons.front().flag = true;
    }
}

bool interactive_message_t::set_default_button(int id)
{
    const auto found = std::find_if(buttons.begin(), buttons.end(),
                                    [id](const message_button_t& button) { return button.id == id; });
    if (found == buttons.end())
        return false;
    if (default_button >= 0 && static_cast<std::size_t>(default_button) < buttons.size())
        buttons[static_cast<std::size_t>(default_button)].flag = false;
    default_button = static_cast<std::int32_t>(found - buttons.begin());
    found->flag = true;
    return true;
}

int interactive_message_t::get_default_button() const
{
    if (default_button < 0 || static_cast<std::size_t>(default_button) >= buttons.size())
        return -1;
    return buttons[static_cast<std::size_t>(default_button)].id;
}

void interactive_message_t::set_button_name(int id, const std::string& text)
{
    for (message_button_t& button : buttons)
        if (button.id == id)
            button.text = text;
}

void interactive_message_t::clear_buttons()
{
    buttons.clear();
    default_button = -1;
}

void standard_message_t::set_buttons(standard_buttons_t kind)
{
    default_button = static_cast<std::int32_t>(kind);
    buttons.clear();
    const auto add = [this](int id, const char* key) {
        buttons.emplace_back(id, translate_message(key), false);
    };
    const auto close = [&] { add(button_close, CPIL_2_18::i18n::catalog_key("btn.close")); };
    const auto retry = [&] { add(button_retry, CPIL_2_18::i18n::catalog_key("btn.retry")); };
    const auto yes_no = [&] {
        add(button_yes, CPIL_2_18::i18n::catalog_key("btn.yes"));
        add(button_no, CPIL_2_18::i18n::catalog_key("btn.no"));
    };
    const auto ok_cancel = [&] {
        add(button_ok, CPIL_2_18::i18n::catalog_key("btn.ok"));
        add(button_cancel, CPIL_2_18::i18n::catalog_key("btn.cancel"));
    };
    switch (kind) {
    case standard_buttons_t::yes_no:
        yes_no();
        break;
    case standard_buttons_t::yes_no_retry:
        yes_no();
        retry();
        break;
    case standard_buttons_t::ok_cancel:
        ok_cancel();
        break;
    case standard_buttons_t::ok_cancel_retry:
        ok_cancel();
        retry();
        break;
    case standard_buttons_t::close_retry:
        close();
        retry();
        break;
    case standard_buttons_t::close:
    default:
        close();
    }
}

wx_helpers1::picture_t standard_message_t::get_icon_by_type(icon_types_t type)
{
    // The same pictures under the same numbers as those of message windows; only the answer to an unknown one
    // differs.
    const auto picture =
        message_window_t::get_icon_by_type(static_cast<message_window_t::icon_types_t>(type));
    return picture.is_empty() ? image_loader_t::get().load_image(image_loader_t::image_type_t::error24)
                              : picture;
}

} // namespace commondlg3
