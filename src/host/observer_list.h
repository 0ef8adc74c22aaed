#ifndef ZELUTIL_HOST_OBSERVER_LIST_H
#define ZELUTIL_HOST_OBSERVER_LIST_H

#include <cstdint>
#include <memory>
#include <utility>

namespace zelutil::host {

/// Observers in the order in which they were attached. Any of them may be attached and detached while others are told:
/// one that is detached is not told any more, and one that is attached is told from the next round on.
///
/// The entries belong to the subscriptions. The list itself owns nothing and needs neither construction nor
/// destruction, so that it may be used as long as the code is there, whatever of the process is gone by then.
template <typename Observer>
class ObserverList {
public:
    /// One attached observer, attached for its own lifetime.
    class Entry {
    public:
        Entry(ObserverList& list, std::shared_ptr<Observer> observer) noexcept
            : list_(list), observer_(std::move(observer)), number_(list.nextNumber_++), before_(list.last_) {
            (before_ == nullptr ? list_.first_ : before_->after_) = this;
            list_.last_ = this;
        }
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;
        ~Entry() {
            for (Round* round = list_.innermost_; round != nullptr; round = round->outer_) {
                round->skip(*this);
            }
            (before_ == nullptr ? list_.first_ : before_->after_) = after_;
            (after_ == nullptr ? list_.last_ : after_->before_) = before_;
        }

    private:
        friend class ObserverList;

        ObserverList& list_;
        std::shared_ptr<Observer> observer_;
        std::uint64_t number_;
        Entry* before_;
        Entry* after_ = nullptr;
    };

    constexpr ObserverList() = default;
    ObserverList(const ObserverList&) = delete;
    ObserverList& operator=(const ObserverList&) = delete;

    /// Calls `call` with each observer. What it throws ends the round.
    template <typename Call>
    void tell(Call call) {
        Round round(*this);
        while (const std::shared_ptr<Observer> observer = round.next()) {
            call(*observer);
        }
    }

private:
    /// One telling of all observers. Rounds nest: an observer may cause a round from inside one.
    class Round {
    public:
        explicit Round(ObserverList& list) noexcept
            : list_(list), next_(list.first_), end_(list.nextNumber_), outer_(list.innermost_) {
            list_.innermost_ = this;
        }
        Round(const Round&) = delete;
        Round& operator=(const Round&) = delete;
        ~Round() { list_.innermost_ = outer_; }

        /// Returns the next observer, or null at the end. It is kept while it is called: it may detach itself.
        std::shared_ptr<Observer> next() noexcept {
            if (next_ == nullptr || next_->number_ >= end_) {
                return nullptr;
            }
            const Entry& entry = *next_;
            next_ = entry.after_;
            return entry.observer_;
        }

    private:
        friend class Entry;

        void skip(const Entry& entry) noexcept {
            if (next_ == &entry) {
                next_ = entry.after_;
            }
        }

        ObserverList& list_;
        Entry* next_;
        /// The number of the first entry that came after the beginning.
        std::uint64_t end_;
        Round* outer_;
    };

    Entry* first_ = nullptr;
    Entry* last_ = nullptr;
    std::uint64_t nextNumber_ = 0;
    Round* innermost_ = nullptr;
};

}  // namespace zelutil::host

#endif
