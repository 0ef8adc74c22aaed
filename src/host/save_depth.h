#ifndef ZELUTIL_HOST_SAVE_DEPTH_H
#define ZELUTIL_HOST_SAVE_DEPTH_H

namespace zelutil::host {

/// One save in progress. A save in each notification of a save would never come to an end, so one that is nested too
/// deeply is not admitted. From then on none that is nested is, until the outermost has ended: several such observers
/// would otherwise make a tree of that depth.
class SaveDepth {
public:
    SaveDepth() noexcept;
    SaveDepth(const SaveDepth&) = delete;
    SaveDepth& operator=(const SaveDepth&) = delete;
    ~SaveDepth();

    bool admitted() const noexcept { return admitted_; }

private:
    bool admitted_;
};

}  // namespace zelutil::host

#endif
