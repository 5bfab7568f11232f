#pragma once

#include <cstddef>
#include <vector>

/// A set of objects that each know their place in it, so that entering and leaving it cost the same
/// however many there are.
///
/// An object is in one registry at most. It has the members `Registry<Object> *m_registry`, null
/// while it is in none, and `int m_place`, and leaves its registry in its destructor.
template <typename Object>
class Registry
{
public:
    /// Of a type of this library's own: a vector of pointers to exported classes would be exported
    /// as well.
    struct Entry
    {
        Object *object;

        operator Object *() const { return object; }
    };

    void enter(Object *object)
    {
        object->m_registry = this;
        object->m_place = int(m_objects.size());
        m_objects.push_back({ object });
    }

    void leave(Object *object)
    {
        // The last one takes the place.
        Object *last = m_objects.back();
        m_objects.pop_back();
        if (last != object) {
            m_objects[std::size_t(object->m_place)] = { last };
            last->m_place = object->m_place;
        }
        object->m_registry = nullptr;
    }

    bool contains(const Object *object) const { return object->m_registry == this; }

    const std::vector<Entry> &objects() const { return m_objects; }

private:
    std::vector<Entry> m_objects;
};
