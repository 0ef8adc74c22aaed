#ifndef ZELUTIL_HOST_CALLBACK_H
#define ZELUTIL_HOST_CALLBACK_H

#include <cstddef>
#include <memory>
#include <type_traits>
#include <utility>

namespace zelutil::host {

template <typename Signature>
class Callback;

/// Holds a function of a host's that the library calls: a lambda, a std::function, a function pointer or nothing.
///
/// A std::function would do as well, but for its header: it takes the compiler longer than all headers of this library
/// together, in each source of a host.
template <typename... Arguments>
class Callback<void(Arguments...)> {
public:
    /// Makes an empty one.
    Callback() noexcept = default;
    /// Makes an empty one.
    Callback(std::nullptr_t) noexcept {}
    /// Holds a copy of the function, or the function itself where it is moved in. Empty for a null pointer and for an
    /// empty std::function. Throws what the copy throws, and std::bad_alloc.
    template <typename Function,
              typename = std::enable_if_t<!std::is_same_v<std::decay_t<Function>, Callback> &&
                                          std::is_invocable_v<std::decay_t<Function>&, Arguments...>>>
    Callback(Function&& function) {
        if (!isNull<std::decay_t<Function>>(function)) {
            held_ = std::make_unique<Holder<std::decay_t<Function>>>(std::forward<Function>(function));
        }
    }

    /// Returns whether there is a function.
    explicit operator bool() const noexcept { return held_ != nullptr; }

    /// Calls the function, which must be there; what it throws passes through.
    void operator()(Arguments... arguments) const { held_->call(std::forward<Arguments>(arguments)...); }

private:
    struct Held {
        virtual ~Held() = default;
        virtual void call(Arguments... arguments) = 0;
    };

    template <typename Function>
    struct Holder final : Held {
        template <typename Given>
        explicit Holder(Given&& given) : function(std::forward<Given>(given)) {}
        void call(Arguments... arguments) override { function(std::forward<Arguments>(arguments)...); }

        Function function;
    };

    /// Asks pointers and what says only when asked whether it is empty, as a std::function does. A lambda without
    /// captures turns into a pointer unasked.
    template <typename Function>
    static bool isNull(const Function& function) {
        if constexpr (std::is_pointer_v<Function> || std::is_member_pointer_v<Function>) {
            return function == nullptr;
        } else if constexpr (std::is_constructible_v<bool, const Function&> &&
                             !std::is_convertible_v<const Function&, bool>) {
            return !static_cast<bool>(function);
        } else {
            return false;
        }
    }

    std::unique_ptr<Held> held_;
};

}  // namespace zelutil::host

#endif
