#ifndef ZELUTIL_COMMAND_OBSTACLE_ADVICE_H
#define ZELUTIL_COMMAND_OBSTACLE_ADVICE_H

#include <zelutil/host/result.h>

namespace zelutil::command {

/// Says what somebody does about an action or a setting that a start does not bring back.
constexpr const char* adviceOn(host::Obstacle obstacle) {
    switch (obstacle) {
        case host::Obstacle::ShippedTwice:
            return "Give one of the two another shortcut, or have the shipped actions mended.";
        case host::Obstacle::TakenByAnother:
            return "Give one of the two another shortcut; \"zelutil free\" lists some.";
        case host::Obstacle::ChildRefuses:
            return "Give the action that holds the shortcut in the child's context another one.";
        case host::Obstacle::FollowsParent:
            return "Change the parent instead.";
        case host::Obstacle::NoPlaceInFile:
            return "Have the shipped defaults mended: they need a section for it.";
        case host::Obstacle::NameBelongsToAnother:
            break;
    }
    return "Have the shipped defaults mended: give one of the two settings another name.";
}

}  // namespace zelutil::command

#endif
