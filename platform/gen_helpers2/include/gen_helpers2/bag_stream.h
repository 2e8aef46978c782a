/// @file
/// Bags as streams of their items, for those that are too large to be held in memory. The files are those of
/// variant_bag_file.h.
///
/// \code
/// bag_file_writer_t out(file);
/// out.begin_child("record");
/// out.put("path", path.as_string());
/// out.end_child();
/// const error_code_t saved = out.commit();
/// \endcode
#pragma once

#include "gen_helpers2/error_code.h"
#include "gen_helpers2/export.h"
#include "gen_helpers2/path.h"
#include "gen_helpers2/variant.h"

#include <memory>
#include <string_view>

namespace gen_helpers2 {

/// Writes a bag item by item beside the file that it is to replace. Unless commit() succeeds nothing of it
/// remains and the old file is as it was. Thread: like a standard container.
/// @since 3.1
class GEN_HELPERS2_EXPORT bag_file_writer_t
{
public:
    explicit bag_file_writer_t(const path_t& file);
    ~bag_file_writer_t();
    bag_file_writer_t(const bag_file_writer_t&) = delete;
    bag_file_writer_t& operator=(const bag_file_writer_t&) = delete;

    /// A value of the child that was begun last, or of the bag itself.
    void put(std::string_view name, std::string_view text);
    void put(std::string_view name, const char* text) { put(name, std::string_view(text)); }
    void put(std::string_view name, int value);
    /// A value of any type.
    void put_value(std::string_view name, const variant_t& value);
    /// What follows belongs to this child, until its end.
    void begin_child(std::string_view name);
    /// Ends the child that was begun last.
    void end_child();

    /// The first error, which stays; writing after it does nothing.
    const error_code_t& error() const noexcept;
    /// All children must have been ended.
    [[nodiscard]] error_code_t commit();

private:
    struct impl_t;
    std::unique_ptr<impl_t> m_impl;
};

/// Receives the items of a bag in their order.
/// @since 3.1
class GEN_HELPERS2_EXPORT bag_handler_t
{
public:
    /// A child begins; what follows belongs to it.
    virtual void begin_child(std::string_view name) = 0;
    /// A value of the child that was begun last, or of the bag itself.
    virtual void value(std::string_view name, variant_t value) = 0;
    /// The child that began last has ended.
    virtual void end_child() = 0;
    /// Asked now and then: false ends the reading.
    virtual bool goes_on() { return true; }

protected:
    virtual ~bag_handler_t();
};

/// Reads a file of any size. What was handed over before an error was found was read all the same.
/// @since 3.1
[[nodiscard]] GEN_HELPERS2_EXPORT error_code_t read_variant_bag(const path_t& file, bag_handler_t& handler);

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
