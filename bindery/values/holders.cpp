#include "bindery/values/holders.h"

namespace bindery {

ct_child_base& ct_child_base::operator=(const ct_child_base& other) {
    if (this != &other) _node.reset(other._node ? other._node->clone() : nullptr);
    return *this;
}

ct_container_base::ct_container_base(const ct_container_base& other) {
    if (other.empty()) return;
    reserve(other.size());
    for (const ct_happy_ptr& node : *other._nodes) _nodes->emplace_back(node->clone());
}

ct_container_base& ct_container_base::operator=(const ct_container_base& other) {
    if (this != &other) *this = ct_container_base(other);
    return *this;
}

void ct_container_base::reserve(std::size_t n) {
    if (!_nodes) _nodes = std::make_unique<std::vector<ct_happy_ptr>>();
    _nodes->reserve(n);
}

void ct_container_base::insertNode(std::size_t at, c_node* owned) {
    ct_happy_ptr node(owned);
    if (!_nodes) _nodes = std::make_unique<std::vector<ct_happy_ptr>>();
    _nodes->insert(_nodes->begin() + static_cast<std::ptrdiff_t>(at), std::move(node));
}

void ct_container_base::erase(std::size_t first, std::size_t past) {
    if (first == past) return;
    const auto begin = _nodes->begin();
    _nodes->erase(begin + static_cast<std::ptrdiff_t>(first), begin + static_cast<std::ptrdiff_t>(past));
}

}  // namespace bindery
