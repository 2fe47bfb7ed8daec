// What holds the members of bound classes.
#pragma once
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "bindery/values/node.h"

namespace bindery {

/// Policies: whether a class carries the text between its children.
struct ct_non_mixed {};
struct ct_mixed {
    std::wstring textBefore;  // the text in front of this child
};

/// Values one behind the other, each of which has an address.
template <class T>
using pod_values = std::conditional_t<std::is_same_v<T, bool>, std::deque<T>, std::vector<T>>;

/// One value that has to be there. It counts as set; only reading an element that lacks it clears that.
template <class T, class Mixed = ct_non_mixed>
class ct_simple_pod_single {
public:
    using value_type = T;

    const T& get() const { return _value; }
    T& ref() { return _missing = false, _value; }
    void set(T value) {
        _value = std::move(value);
        _missing = false;
    }
    bool isset() const { return !_missing; }
    void markMissing() { _missing = true; }
    ct_simple_pod_single& operator=(T value) {
        set(std::move(value));
        return *this;
    }

private:
    T _value{};
    bool _missing = false;
    [[no_unique_address]] Mixed _mixed;
};

/// One value and whether it is set.
template <class T, class Mixed = ct_non_mixed>
class ct_simple_pod_optional {
public:
    using value_type = T;

    /// The value; T() when it is not set.
    const T& get() const { return _value; }
    /// The value, or what an absent one stands for.
    T get(T absent) const { return _isset ? _value : std::move(absent); }
    T& ref() { return _isset = true, _value; }
    void set(T value) {
        _value = std::move(value);
        _isset = true;
    }
    void unset() {
        _value = T();
        _isset = false;
    }
    bool isset() const { return _isset; }
    ct_simple_pod_optional& operator=(T value) {
        set(std::move(value));
        return *this;
    }

private:
    T _value{};
    bool _isset = false;
    [[no_unique_address]] Mixed _mixed;
};

/// Most optional narrow texts are absent: an absent one takes a pointer's room.
template <class Mixed>
class ct_simple_pod_optional<std::string, Mixed> {
public:
    using value_type = std::string;

    ct_simple_pod_optional() = default;
    ct_simple_pod_optional(const ct_simple_pod_optional& other) : _value(copyOf(other)), _mixed(other._mixed) {}
    ct_simple_pod_optional(ct_simple_pod_optional&&) noexcept = default;
    ct_simple_pod_optional& operator=(const ct_simple_pod_optional& other) {
        if (this != &other) *this = ct_simple_pod_optional(other);
        return *this;
    }
    ct_simple_pod_optional& operator=(ct_simple_pod_optional&&) noexcept = default;

    const std::string& get() const { return _value ? *_value : none(); }
    std::string get(std::string absent) const { return _value ? *_value : std::move(absent); }
    std::string& ref() {
        if (!_value) _value = std::make_unique<std::string>();
        return *_value;
    }
    void set(std::string value) { ref() = std::move(value); }
    void unset() { _value.reset(); }
    bool isset() const { return _value != nullptr; }
    ct_simple_pod_optional& operator=(std::string value) {
        set(std::move(value));
        return *this;
    }

private:
    static const std::string& none() {
        static const std::string empty;
        return empty;
    }
    static std::unique_ptr<std::string> copyOf(const ct_simple_pod_optional& other) {
        return other._value ? std::make_unique<std::string>(*other._value) : nullptr;
    }

    std::unique_ptr<std::string> _value;
    [[no_unique_address]] Mixed _mixed;
};

/// A repeating element of atomic type.
template <class T, class Mixed = ct_non_mixed>
class ct_simple_pod_multi {
public:
    using value_type = T;

    std::size_t size() const { return _values.size(); }
    bool empty() const { return _values.empty(); }
    bool isset() const { return !_values.empty(); }
    const T& operator[](std::size_t i) const { return _values[i]; }
    T& operator[](std::size_t i) { return _values[i]; }
    void push_back(T value) { _values.push_back(std::move(value)); }
    void clear() { _values.clear(); }
    void erase(std::size_t i) { _values.erase(_values.begin() + static_cast<std::ptrdiff_t>(i)); }
    auto begin() const { return _values.begin(); }
    auto end() const { return _values.end(); }
    pod_values<T>& values() { return _values; }

private:
    pod_values<T> _values;
    [[no_unique_address]] Mixed _mixed;
};

/// The values of a list type that has to be there.
template <class T, class Mixed = ct_non_mixed>
class ct_simple_pod_list_single {
public:
    using value_type = T;

    const pod_values<T>& get() const { return _values; }
    pod_values<T>& ref() { return _missing = false, _values; }
    void set(pod_values<T> values) {
        _values = std::move(values);
        _missing = false;
    }
    bool isset() const { return !_missing; }
    void markMissing() { _missing = true; }

private:
    pod_values<T> _values;
    bool _missing = false;
    [[no_unique_address]] Mixed _mixed;
};

/// The values of a list type that may be absent.
template <class T, class Mixed = ct_non_mixed>
class ct_simple_pod_list_optional {
public:
    using value_type = T;

    const pod_values<T>& get() const { return _values; }
    pod_values<T>& ref() { return _isset = true, _values; }
    void set(pod_values<T> values) {
        _values = std::move(values);
        _isset = true;
    }
    void unset() {
        _values.clear();
        _isset = false;
    }
    bool isset() const { return _isset; }

private:
    pod_values<T> _values;
    bool _isset = false;
    [[no_unique_address]] Mixed _mixed;
};

/// Deletes what a container owns.
struct ct_happy_ptr_deleter {
    void operator()(c_node* node) const { delete node; }
};
using ct_happy_ptr = std::unique_ptr<c_node, ct_happy_ptr_deleter>;

/// A child of complex type, mandatory or not: a pointer, null until first asked for. Copies are deep.
/// T may be incomplete where the holder is a member.
class ct_child_base {
public:
    ct_child_base() = default;
    ct_child_base(const ct_child_base& other) : _node(other._node ? other._node->clone() : nullptr) {}
    ct_child_base(ct_child_base&&) noexcept = default;
    ct_child_base& operator=(const ct_child_base& other);
    ct_child_base& operator=(ct_child_base&&) noexcept = default;

    bool isset() const { return _node != nullptr; }
    void unset() { _node.reset(); }
    c_node* node() const { return _node.get(); }
    void reset(c_node* owned) { _node.reset(owned); }

protected:
    ct_happy_ptr _node;
};

template <class T, class Mixed = ct_non_mixed>
class ct_child : public ct_child_base {
public:
    /// The child, created on first access.
    T& get() {
        if (!_node) _node.reset(makeNode<T>());
        return static_cast<T&>(*_node);
    }
    T* operator->() { return &get(); }
    T& operator*() { return get(); }
    /// The child, null when there is none.
    const T* getIf() const { return static_cast<const T*>(_node.get()); }
    T* getIf() { return static_cast<T*>(_node.get()); }
    T& set(const T& value) {
        _node.reset(value.clone());
        return static_cast<T&>(*_node);
    }

private:
    [[no_unique_address]] Mixed _mixed;
};

/// A repeating child of complex type: owned pointers, so that an element stays where it is while others come
/// and go. Takes one pointer while empty.
class ct_container_base {
public:
    ct_container_base() = default;
    ct_container_base(const ct_container_base& other);
    ct_container_base(ct_container_base&&) noexcept = default;
    ct_container_base& operator=(const ct_container_base& other);
    ct_container_base& operator=(ct_container_base&&) noexcept = default;

    std::size_t size() const { return _nodes ? _nodes->size() : 0; }
    bool empty() const { return size() == 0; }
    bool isset() const { return !empty(); }
    c_node* node(std::size_t i) const { return (*_nodes)[i].get(); }
    void addNode(c_node* owned) { insertNode(size(), owned); }
    void insertNode(std::size_t at, c_node* owned);
    void erase(std::size_t at) { erase(at, at + 1); }
    void erase(std::size_t first, std::size_t past);
    void clear() { _nodes.reset(); }
    void reserve(std::size_t n);

protected:
    std::unique_ptr<std::vector<ct_happy_ptr>> _nodes;
};

template <class T, class Mixed = ct_non_mixed>
class ct_non_pod_container : public ct_container_base {
    template <class Value, class Slot>
    class Iterator {
    public:
        using difference_type = std::ptrdiff_t;
        using value_type = T;
        using reference = Value&;
        using pointer = Value*;
        using iterator_category = std::random_access_iterator_tag;

        Iterator() = default;
        explicit Iterator(Slot* at) : _at(at) {}
        Value& operator*() const { return static_cast<Value&>(**_at); }
        Value* operator->() const { return &**this; }
        Value& operator[](std::ptrdiff_t n) const { return *(*this + n); }
        Iterator& operator++() { return ++_at, *this; }
        Iterator operator++(int) { return Iterator(_at++); }
        Iterator& operator--() { return --_at, *this; }
        Iterator operator--(int) { return Iterator(_at--); }
        Iterator& operator+=(std::ptrdiff_t n) { return _at += n, *this; }
        Iterator& operator-=(std::ptrdiff_t n) { return _at -= n, *this; }
        friend Iterator operator+(Iterator a, std::ptrdiff_t n) { return Iterator(a._at + n); }
        friend Iterator operator+(std::ptrdiff_t n, Iterator a) { return Iterator(a._at + n); }
        friend Iterator operator-(Iterator a, std::ptrdiff_t n) { return Iterator(a._at - n); }
        friend std::ptrdiff_t operator-(Iterator a, Iterator b) { return a._at - b._at; }
        friend auto operator<=>(Iterator a, Iterator b) = default;

    private:
        Slot* _at = nullptr;
    };

public:
    using value_type = T;
    using iterator = Iterator<T, ct_happy_ptr>;
    using const_iterator = Iterator<const T, const ct_happy_ptr>;

    T& operator[](std::size_t i) { return static_cast<T&>(*node(i)); }
    const T& operator[](std::size_t i) const { return static_cast<const T&>(*node(i)); }
    T& back() { return (*this)[size() - 1]; }
    /// Adds a new element, at the end or in front of element `at`.
    T& append() { return insert(size()); }
    T& insert(std::size_t at) {
        insertNode(at, makeNode<T>());
        return (*this)[at];
    }
    /// Adds a copy.
    T& push_back(const T& value) {
        addNode(value.clone());
        return back();
    }

    template <class IsGone>
    void eraseIf(IsGone&& isGone) {
        if (_nodes) std::erase_if(*_nodes, [&](const ct_happy_ptr& node) { return isGone(static_cast<T&>(*node)); });
    }
    template <class Less>
    void stableSort(Less&& less) {
        if (!_nodes) return;
        std::stable_sort(_nodes->begin(), _nodes->end(), [&](const ct_happy_ptr& a, const ct_happy_ptr& b) {
            return less(static_cast<const T&>(*a), static_cast<const T&>(*b));
        });
    }

    iterator begin() { return iterator(_nodes ? _nodes->data() : nullptr); }
    iterator end() { return begin() + static_cast<std::ptrdiff_t>(size()); }
    const_iterator begin() const { return const_iterator(_nodes ? _nodes->data() : nullptr); }
    const_iterator end() const { return begin() + static_cast<std::ptrdiff_t>(size()); }

private:
    [[no_unique_address]] Mixed _mixed;
};

/// An `xs:choice`: which option is selected (from 1, 0: none) and its one live member.
class ct_choice {
public:
    ct_choice() = default;

    int option() const { return _option; }
    bool isset() const { return _option != 0; }
    void unset() {
        _member.unset();
        _option = 0;
    }
    c_node* node() const { return _member.node(); }
    void select(int option, c_node* owned) {
        _member.reset(owned);
        _option = option;
    }
    /// The member of an option, selected and created when another one was live.
    template <class T>
    T& get(int option) {
        if (_option != option) select(option, makeNode<T>());
        return static_cast<T&>(*_member.node());
    }
    /// Null when another option is selected.
    template <class T>
    T* getIf(int option) const {
        return _option == option ? static_cast<T*>(_member.node()) : nullptr;
    }

private:
    ct_child_base _member;
    int _option = 0;
};

/// A value of atomic type as the live member of a choice.
template <class T>
class ct_boxed final : public c_node {
public:
    ct_boxed* clone() const override { return std::make_unique<ct_boxed>(*this).release(); }
    ct_simple_pod_single<T> value;
};

}  // namespace bindery
