#include "window/message_log.h"

namespace viewer {

void MessageLog::tell(const QString& text) {
    texts_ << text;
    emit told(text, false);
}

void MessageLog::warn(const QString& text) {
    texts_ << text;
    ++warnings_;
    emit told(text, true);
}

}  // namespace viewer
