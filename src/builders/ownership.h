// Who owns an element until an annotation takes it.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace dorvale {

/// Hands an object over by a call that takes nothing if it throws.
template <typename T, typename Take> void give(std::unique_ptr<T> object, Take take) {
    take(object.get());
    static_cast<void>(object.release());
}

/// Appends an object to a list of plain pointers, which the list's owner answers for from then on.
template <typename T> void append(std::vector<T*>& list, std::unique_ptr<T> object) {
    give(std::move(object), [&](T* taken) { list.push_back(taken); });
}

/// A list in the form that annotations take. It owns its objects until they are handed over; a list
/// may grow after that and be handed over again.
template <typename T> class PendingList {
public:
    /// @param expected how many objects the list has room for from its first one on
    explicit PendingList(std::size_t expected = 2) : expected_(expected) {}
    PendingList(const PendingList&) = delete;
    PendingList& operator=(const PendingList&) = delete;
    ~PendingList() {
        for (std::size_t i = handedOver_; i < objects_.size(); ++i) {
            delete objects_[i];
        }
    }

    void add(std::unique_ptr<T> object) {
        objects_.reserve(expected_);
        append(objects_, std::move(object));
    }
    const std::vector<T*>& objects() const { return objects_; }
    bool empty() const { return objects_.empty(); }

    /// Hands all objects over by a setter, which takes nothing if it throws.
    template <typename Setter> void handOver(Setter setter) {
        setter(objects_);
        handedOver_ = objects_.size();
    }

private:
    std::size_t expected_;
    std::vector<T*> objects_;
    std::size_t handedOver_ = 0;
};

} // namespace dorvale
