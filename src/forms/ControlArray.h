#pragma once
// A control array: controls of one name told apart by Index. Elements are made
// by a factory so that the array can grow at run time (Load), each new element
// starting from the design of the first.

#include "forms/Form.h"

#include <functional>
#include <map>
#include <stdexcept>

namespace fw {

template <class T> class ControlArray {
  public:
    /// make(index) creates the element in the form; wire(element) connects its events.
    using Factory = std::function<T*(int index)>;
    using Wiring = std::function<void(T& element)>;

    ControlArray() = default;
    ControlArray(QString name, Factory make, Wiring wire = {})
        : m_name(std::move(name)), m_make(std::move(make)), m_wire(std::move(wire))
    {
    }

    const QString& Name() const { return m_name; }
    /// Loads element index; throws std::invalid_argument if it exists already.
    T& Load(int index)
    {
        if (m_items.count(index))
            throw std::invalid_argument("control array element already loaded");
        T* element = m_make(index);
        element->SetIndex(index);
        m_items[index] = element;
        if (m_wire)
            m_wire(*element);
        return *element;
    }
    bool Exists(int index) const { return m_items.count(index) != 0; }
    /// Throws std::out_of_range for an index not loaded.
    T& operator[](int index) const
    {
        auto it = m_items.find(index);
        if (it == m_items.end())
            throw std::out_of_range("control array index not loaded");
        return *it->second;
    }
    T* operator()(int index) const { return &(*this)[index]; }
    int LBound() const { return m_items.empty() ? 0 : m_items.begin()->first; }
    int UBound() const { return m_items.empty() ? -1 : m_items.rbegin()->first; }
    int Count() const { return static_cast<int>(m_items.size()); }

    auto begin() const { return m_items.begin(); }
    auto end() const { return m_items.end(); }

  private:
    QString m_name;
    Factory m_make;
    Wiring m_wire;
    std::map<int, T*> m_items;
};

} // namespace fw
