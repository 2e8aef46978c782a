#pragma once

#include "cfgmgr2/export.h"
#include "gen_helpers2/error_code.h"
#include "gen_helpers2/intrusive_pointer.h"
#include "gen_helpers2/path.h"
#include "gen_helpers2/variant.h"
#include "gen_helpers2/variant_bag.h"

#include <string>
#include <vector>

namespace cfgmgr2 {

/// A tree of named values: what a product remembers for its user between two runs.
///
/// \code
/// gh2::error_code_t result;
/// auto storage = cfgmgr2::open_property_storage(directory / "dialogs.xml", result);
/// storage->get_child("file_dialog")->set_value("width", 640);
/// result = storage->save();
/// \endcode
///
/// Ownership: reference counted. A child keeps the whole storage's file and place but not its siblings'
/// objects; a child that was removed can still be used, but what is put into it is not saved. Thread: all
/// operations are safe in any thread.
class IPropertyStorage : public gen_helpers2::i_ref_counted
{
public:
    /// The child of that name, made when missing. Never null. Children below a depth of 1,000 are not saved
    /// and the attempt is an assertion.
    virtual gen_helpers2::sptr_t<IPropertyStorage> get_child(const std::string& name) = 0;
    virtual bool has_child(const std::string& name) const = 0;
    /// Removes all children of that name.
    virtual void remove_child(const std::string& name) = 0;
    /// In the order in which they were made; a name that several have stands once.
    virtual std::vector<std::string> child_names() const = 0;

    virtual void set_value(const std::string& name, const gen_helpers2::variant_t& value) = 0;
    /// The empty variant if there is none.
    virtual gen_helpers2::variant_t get_value(const std::string& name) const = 0;
    virtual bool has_value(const std::string& name) const = 0;
    /// Nothing happens when there is none.
    virtual void remove_value(const std::string& name) = 0;
    /// Names of the values at this level, without children.
    virtual std::vector<std::string> value_names() const = 0;

    /// Everything below this, values first. Children of the same name are kept one by one.
    virtual gen_helpers2::variant_bag_t to_bag() const = 0;
    /// Replaces everything below this.
    virtual void from_bag(const gen_helpers2::variant_bag_t& bag) = 0;
    /// Makes those changes below this that lead from one bag to another. What both have alike stays as it is
    /// here, and what neither knows stays as well: somebody else may have put it there since `before` was
    /// read.
    ///
    /// Children of one name are records, told apart by the value of the first of these names that they have.
    /// From now on save() takes records over from another process one by one, and inside them value by value.
    /// For whoever keeps a copy of a list and gives it back later.
    /// @since 3.1
    virtual void change(const gen_helpers2::variant_bag_t& before, const gen_helpers2::variant_bag_t& after,
                        const std::vector<std::string>& keys) = 0;

    /// Writes the whole storage, whichever child it is called on.
    ///
    /// A new file, and folders that are made for it, are the user's alone; an existing file keeps its mode.
    /// If another process has written it since it was read, what was not touched here is taken over from it,
    /// value by value and child by child; what both changed is as it is here. A file that could not be
    /// understood is renamed to `<file>.damaged` first; one that still cannot be read at all is an error. On
    /// an error the file is as it was and everything stays to be saved. A storage in memory only has nothing
    /// to write: success.
    [[nodiscard]] virtual gen_helpers2::error_code_t save() = 0;

protected:
    ~IPropertyStorage() = default;
};

/// Opens the storage in a bag file. Never null: a missing file is an empty storage and success; a damaged or
/// unreadable one is an empty storage and an error.
CFGMGR2_EXPORT gen_helpers2::sptr_t<IPropertyStorage>
open_property_storage(const gen_helpers2::path_t& file, gen_helpers2::error_code_t& result);

/// A storage that is never written: for tests and for hosts that want nothing remembered.
CFGMGR2_EXPORT gen_helpers2::sptr_t<IPropertyStorage> make_memory_property_storage();

} // namespace cfgmgr2
