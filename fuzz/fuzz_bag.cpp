// Files of bags: any bytes give a bag or an error, and a bag that was read survives being written.
#include "check.h"
#include "gen_helpers2/strings.h"
#include "gen_helpers2/variant_bag_file.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

using namespace gen_helpers2;

namespace {

void round_trip(const variant_bag_t& bag)
{
    std::string text;
    variant_bag_t again;
    check(save_to_string(bag, text).succeeded());
    check(is_valid_utf8(text));
    check(load_from_string(text, again).succeeded());
    check(again == bag);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    variant_bag_t bag;
    bag.put("before", 1);
    const variant_bag_t before(bag);
    if (load_from_string(bytes, bag).succeeded())
        round_trip(bag);
    else
        check(bag == before);

    variant_bag_t written;
    written.put(bytes, bytes);
    written.add_child(bytes).put("", bytes);
    round_trip(written);

    std::string back;
    check(unescape_bytes(escape_bytes(bytes), back) && back == bytes);
    check(is_valid_utf8(replace_invalid_utf8(bytes)));
    return 0;
}
