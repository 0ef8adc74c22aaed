#ifndef QT_BOARD_WINDOW_MESSAGE_LOG_H
#define QT_BOARD_WINDOW_MESSAGE_LOG_H

#include <QObject>
#include <QString>
#include <QStringList>

namespace viewer {

/// Everything that the viewer has told since its start, the latest last. The status bar shows the latest, the messages
/// panel all, so that nothing is lost that came while nobody looked.
class MessageLog : public QObject {
    Q_OBJECT

public:
    void tell(const QString& text);
    void warn(const QString& text);

    const QStringList& texts() const { return texts_; }
    int warnings() const { return warnings_; }

signals:
    void told(const QString& text, bool isWarning);

private:
    QStringList texts_;
    int warnings_ = 0;
};

}  // namespace viewer

#endif
