#ifndef ZELUTIL_HOST_NESTING_H
#define ZELUTIL_HOST_NESTING_H

namespace zelutil::host {

/// Bounds calls that are made from inside each other, as by an observer that saves at each notification: it would never
/// come to an end.
class Nesting {
public:
    /// At most `maximum` calls are admitted inside each other.
    explicit constexpr Nesting(int maximum) noexcept : maximum_(maximum) {}
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

    /// One call, for its lifetime. From the first one on that is not admitted none that is nested is, until the
    /// outermost has ended: where several observers nest, they would otherwise make a tree of that depth.
    class Call {
    public:
        explicit Call(Nesting& nesting) noexcept : nesting_(nesting) {
            nesting_.isExceeded_ = nesting_.isExceeded_ || nesting_.inProgress_ == nesting_.maximum_;
            admitted_ = !nesting_.isExceeded_;
            ++nesting_.inProgress_;
        }
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
        ~Call() {
            --nesting_.inProgress_;
            nesting_.isExceeded_ = nesting_.isExceeded_ && nesting_.inProgress_ > 0;
        }

        bool admitted() const noexcept { return admitted_; }

    private:
        Nesting& nesting_;
        bool admitted_ = false;
    };

private:
    int maximum_;
    int inProgress_ = 0;
    bool isExceeded_ = false;
};

}  // namespace zelutil::host

#endif
