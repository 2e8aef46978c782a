#include "ff/search_directories.h"
#include "stored_dirs.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace FF_2_13 {
namespace {

using cfgmgr2::IPropertyStorage;
using gen_helpers2::error_code_t;

constexpr char child_name[] = "search_directories";

class container_t : public gen_helpers2::ref_counted_of_t<IEditableSearchDirContainer>
{
public:
    explicit container_t(const gen_helpers2::sptr_t<IPropertyStorage>& storage) : m_storage(storage)
    {
        if (!storage || !storage->has_child(child_name))
            return;
        const auto stored = storage->get_child(child_name);
        for (const std::string& name : stored->value_names()) {
            const auto value = stored->get_value(name);
            const long category = std::strtol(name.c_str(), nullptr, 10);
            if (name == name_of(category) && value.can_get<std::string>())
                m_lists[static_cast<search_category_t>(category)] =
                    from_stored_text(value.get<std::string>());
        }
    }

    ObjectPtr<ISearchDirIterator> get_dirs(search_category_t category) override;

    std::size_t count(search_category_t category) const override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto list = m_lists.find(category);
        return list == m_lists.end() ? 0 : list->second.dirs.size();
    }

    void clear(search_category_t category) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        auto& list = m_lists[category].dirs;
        for (search_dir_entry_t& dir : list) {
            std::string path = dir.path;
            m_cleared[category].insert_or_assign(std::move(path), std::move(dir));
        }
        list.clear();
        ++m_touched[category];
    }

    bool insert_known(search_category_t category, std::size_t at, const std::string& path, bool recursive)
    {
        search_dir_entry_t dir{path, recursive, true, std::string()};
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            const auto& cleared = m_cleared[category];
            if (const auto known = cleared.find(path); known != cleared.end()) {
                dir.enabled = known->second.enabled;
                dir.comment = known->second.comment;
            }
        }
        return insert(category, at, dir);
    }

    bool insert(search_category_t category, std::size_t at, const search_dir_entry_t& dir)
    {
        if (!is_storable(dir.path))
            return false;
        const std::lock_guard<std::mutex> lock(m_mutex);
        auto& list = m_lists[category].dirs;
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(std::min(at, list.size())), dir);
        ++m_touched[category];
        return true;
    }

    search_dir_entry_t get(search_category_t category, std::size_t at) const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto list = m_lists.find(category);
        return list != m_lists.end() && at < list->second.dirs.size() ? list->second.dirs[at]
                                                                      : search_dir_entry_t();
    }

    error_code_t save() override
    {
        if (!m_storage)
            return {};
        // What is changed while the storage is written is due the next time.
        std::map<search_category_t, unsigned> touched;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            touched = m_touched;
            const auto stored = m_storage->get_child(child_name);
            for (const auto& [category, count] : touched) {
                const std::string text = to_stored_text(m_lists[category]);
                // A list that is as it was must not win over what another program has made of it.
                const auto before = stored->get_value(name_of(category));
                if (!before.can_get<std::string>() || before.get<std::string>() != text)
                    stored->set_value(name_of(category), text);
            }
        }
        const error_code_t result = m_storage->save();
        if (result.failed())
            return result;
        const std::lock_guard<std::mutex> lock(m_mutex);
        for (const auto& [category, count] : touched)
            if (m_touched[category] == count) {
                m_touched.erase(category);
                m_cleared.erase(category);
            }
        return result;
    }

private:
    static std::string name_of(long category) { return std::to_string(category); }

    mutable std::mutex m_mutex;
    gen_helpers2::sptr_t<IPropertyStorage> m_storage;
    std::map<search_category_t, stored_list_t> m_lists;
    /// What stood in a list before it was cleared, by path; until it is saved.
    std::map<search_category_t, std::map<std::string, search_dir_entry_t>> m_cleared;
    std::map<search_category_t, unsigned> m_touched; ///< since they were saved, and how often
};

class iterator_t : public gen_helpers2::ref_counted_of_t<ISearchDirIterator>
{
public:
    iterator_t(container_t* container, search_category_t category)
        : m_container(container), m_category(category)
    {
    }

    bool at_end() const override { return m_at >= m_container->count(m_category); }
    void next() override { m_at = std::min(m_at + 1, m_container->count(m_category)); }
    std::string get_path() const override { return m_container->get(m_category, m_at).path; }
    bool is_recursive() const override { return m_container->get(m_category, m_at).recursive; }
    bool add(const std::string& path, bool recursive) override
    {
        return added(m_container->insert_known(m_category, start(), path, recursive));
    }
    bool is_enabled() const override { return m_container->get(m_category, m_at).enabled; }
    std::string get_comment() const override { return m_container->get(m_category, m_at).comment; }
    bool add_entry(const search_dir_entry_t& entry) override
    {
        return added(m_container->insert(m_category, start(), entry));
    }

private:
    std::size_t start() { return m_at = std::min(m_at, m_container->count(m_category)); }
    bool added(bool succeeded)
    {
        m_at += succeeded ? 1 : 0;
        return succeeded;
    }

    ObjectPtr<container_t> m_container;
    search_category_t m_category;
    std::size_t m_at = 0;
};

ObjectPtr<ISearchDirIterator> container_t::get_dirs(search_category_t category)
{
    return new iterator_t(this, category);
}

} // namespace

ObjectPtr<IEditableSearchDirContainer>
make_search_dir_container(const gen_helpers2::sptr_t<IPropertyStorage>& storage)
{
    return new container_t(storage);
}

} // namespace FF_2_13
