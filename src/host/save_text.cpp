#include "host/save_text.h"

namespace zelutil::host {
namespace {

using Status = SaveResult::Status;

std::string outcome(const SaveResult& result) {
    switch (result.status) {
        case Status::Saved:
            return "Saved in " + result.path;
        case Status::Unchanged:
            return "Nothing has changed since the last save in " + result.path;
        case Status::NoDefaults:
            return "Nothing was saved, because there are no shipped defaults";
        case Status::NoPath:
            return "Nothing was saved, because there is no place for the file: " +
                   (result.path.empty() ? "its directory is not known" : result.path + " can be no file");
        case Status::NotKept:
            return "Nothing was saved, because " + result.path +
                   " could not be taken over whole and no copy of it could be kept beside it";
        case Status::NotWritten:
            return "Nothing was saved, because the system or a lack of memory did not allow to write " + result.path;
        case Status::Torn:
            return "The file " + result.path + " was only written in part";
        case Status::Starting:
            return "Nothing was saved, because the preferences are just being read";
        case Status::TooDeep:
            break;
    }
    return "Nothing was saved, because the observers of saves save again and again, " +
           std::to_string(kMaximumSaveDepth) + " times inside each other";
}

}  // namespace

std::string textOf(const SaveResult& result, bool tookTurn) {
    std::string text = outcome(result);
    if (!result.keptCopy.empty()) {
        text += "; what was there and could not be taken over is kept as " + result.keptCopy;
    }
    if (result.status == Status::Saved && !tookTurn) {
        text += "; other processes could not be kept from saving at the same moment";
    }
    return text + ".";
}

std::string textOfUnread(const SaveResult& result) {
    return "Nothing was saved, because " + result.path +
           " is there and could not be read, and there is nothing to put in its place.";
}

std::string textOfUnreadable(const SaveResult& result) {
    return "Nothing was saved, because the contents of " + result.path +
           " would be too long or nested too deeply to be read back.";
}

}  // namespace zelutil::host
