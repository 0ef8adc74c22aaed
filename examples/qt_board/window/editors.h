#ifndef QT_BOARD_WINDOW_EDITORS_H
#define QT_BOARD_WINDOW_EDITORS_H

#include <zelutil/host/observers.h>

#include <QObject>
#include <QString>
#include <vector>

class QWidget;

namespace viewer {

/// The editors of the window as the application server knows them. Each is a context of the actions. A switch is
/// announced to the server; everything that follows it, this window too, follows what the server says.
class Editors : public QObject {
    Q_OBJECT

public:
    explicit Editors(QObject* parent = nullptr);

    /// Registers the editor with the application server.
    void add(QWidget* editor, const QString& context);

    /// Announces that the user works in that editor now, unless the server knows it.
    void switchTo(QWidget* editor);

    /// Returns the editor that the server holds for active, and its context; null and empty for another's.
    QWidget* active() const;
    QString activeContext() const;

signals:
    void switched(const QString& context);

private:
    struct Editor {
        QWidget* widget;
        QString context;
        int id;
    };

    const Editor* activeEditor() const;
    void followFocus(QWidget* now);

    std::vector<Editor> editors_;
    zelutil::host::Subscription subscription_;
};

/// Returns the context as people call it.
QString contextTitle(const QString& context);

}  // namespace viewer

#endif
