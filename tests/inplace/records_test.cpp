#include "log_tools.h"

#include <wx_helpers1/picture.h>

#include <wx/image.h>

#include <string>
#include <vector>

using namespace commondlg3;
using gen_helpers2::variant_bag_t;
using standard = standard_message_t;

TEST(InplaceRecords, buttons_and_their_default)
{
    interactive_message_t::ptr_t message(new interactive_message_t);
    EXPECT_FALSE(message->set_default_button(7)); // no button yet: and nothing may be touched at index -1
    for (const int id : {7, 8, 8})
        message->add_button(id, "One");
    EXPECT_EQ(message->get_default_button(), 7);
    EXPECT_TRUE(message->set_default_button(8));
    EXPECT_EQ(message->default_button, 1) << "the first of those with the id";
    EXPECT_FALSE(message->buttons[0].flag);
    message->clear_buttons();
    EXPECT_EQ(message->get_default_button(), -1);
    EXPECT_EQ(message->get_button(4000000000u).id, 0);
}

TEST(InplaceRecords, sets_store_their_number_as_the_default)
{
    struct expected_t
    {
        int kind;
        std::vector<int> ids;
        int default_id;
    };
    const expected_t sets[] = {{0, {1}, 1},        {1, {2, 3}, 3},  {2, {2, 3, 7}, 7}, {3, {4, 5}, -1},
                               {4, {4, 5, 7}, -1}, {5, {1, 7}, -1}, {99, {1}, -1}};
    for (const expected_t& set : sets) {
        standard::ptr_t message(new standard);
        message->add_button(42, "Own");
        message->set_buttons(static_cast<standard::standard_buttons_t>(set.kind));
        std::vector<int> ids;
        for (const auto& button : message->buttons) {
            ids.push_back(button.id);
            EXPECT_FALSE(button.flag);
            EXPECT_NE(button.text.find('&'), std::string::npos)
                << "translated, with its letter: " << button.text;
        }
        EXPECT_EQ(ids, set.ids) << set.kind;
        EXPECT_EQ(message->default_button, set.kind);
        EXPECT_EQ(message->get_default_button(), set.default_id) << set.kind;
    }
}

TEST(InplaceRecords, a_picture_survives_and_what_a_bag_lacks_stays)
{
    message_t::ptr_t message(new message_t);
    message->picture = standard::get_icon_by_type(standard::icon_types_t::warning);
    variant_bag_t bag;
    message->save(bag);
    message_t::ptr_t loaded(new message_t);
    loaded->load(bag);
    ASSERT_TRUE(loaded->picture.is_still() && !loaded->picture.is_empty());
    const wxImage image = loaded->picture.get_still().getImage(true);
    EXPECT_EQ(image.GetSize(), wxSize(24, 24));
    EXPECT_TRUE(image.HasMask() || image.HasAlpha()) << "the corners must stay transparent";
    EXPECT_FALSE(image.IsTransparent(12, 12));

    // Empty texts are written, an animation is not.
    message->picture = standard::get_icon_by_type(standard::icon_types_t::progress);
    variant_bag_t animated;
    message->save(animated);
    EXPECT_TRUE(animated.has<gen_helpers2::variant_t>("msg"));
    EXPECT_FALSE(animated.has<gen_helpers2::variant_t>("img"));
    loaded->load(animated);
    EXPECT_FALSE(loaded->picture.is_empty());
    const auto unknown = standard::get_icon_by_type(static_cast<standard::icon_types_t>(9));
    EXPECT_TRUE(unknown.is_still() && !unknown.is_empty());
    EXPECT_EQ(test::take_assertions(), std::vector<std::string>{"unsupported picture type"});
    variant_bag_t only_caption;
    only_caption.put("cap", "new");
    loaded->message = "old";
    loaded->load(only_caption);
    EXPECT_EQ(loaded->caption + loaded->message, "newold");
}
