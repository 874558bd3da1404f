// A control array: element 0 is the design template; elements loaded at run
// time copy it and start hidden. Loading an element that exists fails.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace quillet {

template <class T>
class ControlArray {
 public:
  using Factory = std::function<std::unique_ptr<T>(const T& templ, int index)>;
  // `attach` and `detach` register elements with the form that paints them.
  ControlArray(std::unique_ptr<T> element0, Factory copy, std::function<void(T&)> attach,
               std::function<void(T&)> detach)
      : copy_(std::move(copy)), attach_(std::move(attach)), detach_(std::move(detach)) {
    attach_(*element0);
    elements_.emplace(0, std::move(element0));
  }
  ~ControlArray() {
    for (auto& [index, element] : elements_) detach_(*element);
  }
  ControlArray(const ControlArray&) = delete;
  ControlArray& operator=(const ControlArray&) = delete;

  bool Exists(int index) const { return elements_.count(index) != 0; }
  // Throws for a missing element, as reading an element that isn't loaded fails.
  T& operator()(int index) { return *elements_.at(index); }
  const T& operator()(int index) const { return *elements_.at(index); }
  int Count() const { return static_cast<int>(elements_.size()); }

  [[nodiscard]] bool Load(int index) {
    if (index <= 0 || Exists(index)) return false;
    auto element = copy_(*elements_.at(0), index);
    element->SetVisible(false);
    attach_(*element);
    elements_.emplace(index, std::move(element));
    return true;
  }
  [[nodiscard]] bool Unload(int index) {
    auto it = elements_.find(index);
    if (index == 0 || it == elements_.end()) return false;
    detach_(*it->second);
    elements_.erase(it);
    return true;
  }

 private:
  Factory copy_;
  std::function<void(T&)> attach_, detach_;
  std::map<int, std::unique_ptr<T>> elements_;
};

}  // namespace quillet
