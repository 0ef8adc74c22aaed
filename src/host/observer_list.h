#ifndef ZELUTIL_HOST_OBSERVER_LIST_H
#define ZELUTIL_HOST_OBSERVER_LIST_H

#include <zelutil/host/observers.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace zelutil::host {

/// Observers in the order in which they were attached. Any of them may be attached and detached while others are told:
/// one that is detached is not told any more, and one that is attached is told from the next round on. The rounds are
/// numbered by whoever has all told, because a round may have begun before it comes to this list.
///
/// The entries belong to the subscriptions. The list itself owns nothing and needs neither construction nor
/// destruction, so that it may be used as long as the code is there, whatever of the process is gone by then.
template <typename Observer>
class ObserverList {
public:
    /// One attached observer, attached for its own lifetime.
    class Entry {
    public:
        /// `lastRound` is the number of the round that began last, and no smaller than that of the entry before.
        Entry(ObserverList& list, std::shared_ptr<Observer> observer, std::uint64_t lastRound) noexcept
            : list_(list), observer_(std::move(observer)), lastRound_(lastRound), before_(list.last_) {
            (before_ == nullptr ? list_.first_ : before_->after_) = this;
            list_.last_ = this;
        }
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;
        ~Entry() {
            // The rounds in progress go on behind it.
            std::replace(list_.next_.data(), list_.next_.data() + list_.rounds_, this, after_);
            (before_ == nullptr ? list_.first_ : before_->after_) = after_;
            (after_ == nullptr ? list_.last_ : after_->before_) = before_;
        }

    private:
        friend class ObserverList;

        ObserverList& list_;
        std::shared_ptr<Observer> observer_;
        std::uint64_t lastRound_;
        Entry* before_;
        Entry* after_ = nullptr;
    };

    constexpr ObserverList() = default;
    ObserverList(const ObserverList&) = delete;
    ObserverList& operator=(const ObserverList&) = delete;

    bool empty() const noexcept { return first_ == nullptr; }

    /// Calls `call` with each observer that was attached before the round of that number began. What it throws ends the
    /// round. An observer may cause another round meanwhile, as long as no more than `kMaximumNotificationDepth` are in
    /// progress.
    template <typename Call>
    void tell(std::uint64_t number, Call call) {
        const Round round(*this, number);
        while (const std::shared_ptr<Observer> observer = round.next()) {
            call(*observer);
        }
    }

private:
    /// One telling of all observers.
    class Round {
    public:
        Round(ObserverList& list, std::uint64_t number) noexcept
            : list_(list), place_(list.rounds_++), number_(number) {
            list_.next_[place_] = list_.first_;
        }
        Round(const Round&) = delete;
        Round& operator=(const Round&) = delete;
        ~Round() { --list_.rounds_; }

        /// Returns the next observer, or null at the end. It is kept while it is called: it may detach itself.
        std::shared_ptr<Observer> next() const noexcept {
            const Entry* const entry = list_.next_[place_];
            if (entry == nullptr || entry->lastRound_ >= number_) {
                return nullptr;
            }
            list_.next_[place_] = entry->after_;
            return entry->observer_;
        }

    private:
        ObserverList& list_;
        std::size_t place_;
        std::uint64_t number_;
    };

    Entry* first_ = nullptr;
    Entry* last_ = nullptr;
    /// The next entry of each round in progress, the outermost first.
    std::array<Entry*, kMaximumNotificationDepth> next_{};
    std::size_t rounds_ = 0;
};

}  // namespace zelutil::host

#endif
