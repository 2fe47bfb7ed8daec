// The root of bound objects.
#pragma once
#include <memory>
#include <utility>

namespace bindery {

struct Extras;

/// Base of everything that can stand in a bound tree: three virtual slots, value semantics through `clone`.
class c_node {
public:
    virtual c_node* clone() const = 0;  // owned by the caller
    virtual ~c_node() = default;

protected:
    c_node() = default;
    c_node(const c_node&) = default;
    c_node& operator=(const c_node&) = default;
};

/// Base of the bound classes: what the schema does not know of an element is kept here.
class c_bound : public c_node {
public:
    ~c_bound() override;

    /// Null as long as nothing unknown was met.
    const Extras* extras() const { return _extras.get(); }
    /// Made when there are none yet.
    Extras& makeExtras();
    void dropExtras();

protected:
    c_bound();
    c_bound(const c_bound& other);
    c_bound& operator=(const c_bound& other);
    c_bound(c_bound&&) noexcept;
    c_bound& operator=(c_bound&&) noexcept;

private:
    std::unique_ptr<Extras> _extras;
};

/// For the tables: makes an object of a bound class.
template <class T>
c_node* makeNode() {
    return std::make_unique<T>().release();
}

}  // namespace bindery
