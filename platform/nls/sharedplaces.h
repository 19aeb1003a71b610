#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace vel::nls {

/// The live values of a process by their names, each built once and freed with its last holder. Holds no memory while
/// no value lives, and needs no constructor at start-up.
///
/// A place is a node of the list; whoever builds, waits for or holds the value of a place holds the place. No place is
/// let go while the list is locked, for its destructor locks the list.
template <typename Value>
class SharedPlaces
{
public:
    class Place : public std::enable_shared_from_this<Place>
    {
    public:
        Place(SharedPlaces& list, std::string name) : m_rList(list), m_sName(std::move(name)) {}
        ~Place()
        {
            if (m_bListed) {
                m_rList.remove(*this);
            }
        }
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;

        /// The value, made by `build()` when there is none; another thread waits. When `build()` throws, the next
        /// caller builds.
        template <typename Build>
        std::shared_ptr<const Value> get(Build build)
        {
            const std::lock_guard lock(m_tBuilding);
            std::shared_ptr<const Value> value = m_pValue.lock();
            if (!value) {
                value = build(this->shared_from_this());
                m_pValue = value;
            }
            return value;
        }

    private:
        friend class SharedPlaces;

        bool isCalled(std::string_view name) const
        {
            if (m_sName == name) {
                return true;
            }
            for (const std::string& alias : m_tAliases) {
                if (alias == name) {
                    return true;
                }
            }
            return false;
        }

        SharedPlaces& m_rList;
        std::string m_sName;
        std::vector<std::string> m_tAliases;
        std::mutex m_tBuilding;
        std::weak_ptr<const Value> m_pValue;
        Place* m_pNext = nullptr;
        bool m_bListed = false;
    };

    constexpr SharedPlaces() = default;

    /// The place of that name or alias, or null.
    std::shared_ptr<Place> find(std::string_view name)
    {
        const std::lock_guard lock(m_tMutex);
        return findLocked(name);
    }

    /// The place of that name, made when there is none. It answers to `alias` from now on too.
    std::shared_ptr<Place> findOrAdd(const std::string& name, std::string_view alias = {})
    {
        auto fresh = std::make_shared<Place>(*this, name);
        std::shared_ptr<Place> place;
        const std::lock_guard lock(m_tMutex);
        place = findLocked(name);
        if (!place) {
            place = fresh;
            place->m_pNext = m_pFirst;
            m_pFirst = place.get();
            place->m_bListed = true;
        }
        // More spellings of one name are not worth remembering: whoever sends them waits a little longer.
        if (!alias.empty() && place->m_tAliases.size() < kMostAliases && !place->isCalled(alias)) {
            place->m_tAliases.emplace_back(alias);
        }
        return place;
    }

private:
    static constexpr std::size_t kMostAliases = 8;

    std::shared_ptr<Place> findLocked(std::string_view name)
    {
        for (Place* place = m_pFirst; place != nullptr; place = place->m_pNext) {
            if (place->isCalled(name)) {
                // A place whose last holder is about to remove it is gone.
                if (std::shared_ptr<Place> held = place->weak_from_this().lock()) {
                    return held;
                }
            }
        }
        return nullptr;
    }
    void remove(const Place& gone)
    {
        const std::lock_guard lock(m_tMutex);
        for (Place** link = &m_pFirst; *link != nullptr; link = &(*link)->m_pNext) {
            if (*link == &gone) {
                *link = gone.m_pNext;
                return;
            }
        }
    }

    std::mutex m_tMutex;
    Place* m_pFirst = nullptr;
};

}  // namespace vel::nls
