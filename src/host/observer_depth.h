#ifndef ZELUTIL_HOST_OBSERVER_DEPTH_H
#define ZELUTIL_HOST_OBSERVER_DEPTH_H

namespace zelutil::host {

/// One notification in progress, of whatever server. Observers that cause a notification at each notification would
/// never come to an end, so those that are nested too deeply are not admitted. From then on none that is nested is,
/// until the outermost has ended: several such observers would otherwise make a tree of that depth.
class ObserverDepth {
public:
    ObserverDepth() noexcept;
    ObserverDepth(const ObserverDepth&) = delete;
    ObserverDepth& operator=(const ObserverDepth&) = delete;
    ~ObserverDepth();

    /// Returns whether the observers are to be told.
    bool admitted() const noexcept { return admitted_; }

private:
    bool admitted_;
};

}  // namespace zelutil::host

#endif
