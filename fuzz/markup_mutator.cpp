// Inputs that are markup are changed an element at a time as well: one is taken out, or put in again where
// another begins, with all that it holds.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t max_size);

namespace {

// Behind the end tag of the element that begins at `begin`; behind its start tag where it has none.
std::size_t end_of_element(const std::string& text, std::size_t begin)
{
    const auto behind_tag = [&](std::size_t at) {
        const std::size_t end = text.find('>', at);
        return end == std::string::npos ? text.size() : end + 1;
    };
    int depth = 0;
    for (std::size_t at = begin; at != std::string::npos; at = text.find('<', at + 1)) {
        const std::size_t end = behind_tag(at);
        if (at + 1 < text.size() && text[at + 1] == '/')
            --depth;
        else if (end < 2 || text[end - 2] != '/')
            ++depth;
        if (depth <= 0)
            return end;
    }
    return behind_tag(begin);
}

} // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t max_size,
                                               unsigned int seed)
{
    std::minstd_rand random(seed);
    std::string text(reinterpret_cast<const char*>(data), size);
    std::vector<std::size_t> begins;
    for (std::size_t at = text.find('<'); at != std::string::npos; at = text.find('<', at + 1))
        begins.push_back(at);
    if (begins.empty() || random() % 3)
        return LLVMFuzzerMutate(data, size, max_size);
    const std::size_t begin = begins[random() % begins.size()];
    const std::string element = text.substr(begin, end_of_element(text, begin) - begin);
    if (random() % 3)
        text.insert(begins[random() % begins.size()], element);
    else
        text.erase(begin, element.size());
    text.resize(std::min(text.size(), max_size));
    std::copy(text.begin(), text.end(), data);
    return text.size();
}
