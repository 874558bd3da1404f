// A control array: its lowest element (0 unless told) is the design
// template; elements loaded at run time copy it and start hidden. Loading an
// element that exists fails, and the template can't be unloaded.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

namespace quillet {

template <class T>
class ControlArray {
 public:
  using Factory = std::function<std::unique_ptr<T>(const T& templ, int index)>;
  // `attach` and `detach` register elements with the form that paints them.
  ControlArray(std::unique_ptr<T> templ, Factory copy, std::function<void(T&)> attach,
               std::function<void(T&)> detach, int first = 0)
      : first_(first), copy_(std::move(copy)), attach_(std::move(attach)), detach_(std::move(detach)) {
    attach_(*templ);
    elements_.emplace(first, std::move(templ));
  }
  ~ControlArray() {
    for (auto& [index, element] : elements_) detach_(*element);
  }
  ControlArray(const ControlArray&) = delete;
  ControlArray& operator=(const ControlArray&) = delete;

  bool Exists(int index) const { return elements_.count(index) != 0; }
  // Throws for a missing element, as reading an element that isn't loaded fails.
  T& operator()(int index) { return *Find(index); }
  const T& operator()(int index) const { return *Find(index); }
  int Count() const { return static_cast<int>(elements_.size()); }

  [[nodiscard]] bool Load(int index) {
    if (index <= first_ || Exists(index)) return false;
    auto element = copy_(*elements_.at(first_), index);
    element->SetVisible(false);
    attach_(*element);
    elements_.emplace(index, std::move(element));
    return true;
  }
  [[nodiscard]] bool Unload(int index) {
    auto it = elements_.find(index);
    if (index == first_ || it == elements_.end()) return false;
    detach_(*it->second);
    elements_.erase(it);
    return true;
  }

 private:
  const std::unique_ptr<T>& Find(int index) const {
    const auto it = elements_.find(index);
    if (it == elements_.end())
      throw std::out_of_range("Control array element '" + std::to_string(index) + "' doesn't exist");
    return it->second;
  }

  int first_;
  Factory copy_;
  std::function<void(T&)> attach_, detach_;
  std::map<int, std::unique_ptr<T>> elements_;
};

}  // namespace quillet
