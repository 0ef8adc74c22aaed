#ifndef QT_BOARD_KEYS_KEY_CAPTURE_H
#define QT_BOARD_KEYS_KEY_CAPTURE_H

#include <QLineEdit>

namespace viewer {

/// A field that shows the key that is pressed in it, whatever else the key does elsewhere. Only Tab goes on to the next
/// field, as everywhere; its text can be typed.
class KeyCapture : public QLineEdit {
    Q_OBJECT

public:
    explicit KeyCapture(QWidget* parent = nullptr);

signals:
    /// The text is that of the key as `textOf` returns it; empty for a key that has none.
    void captured(const QString& text);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace viewer

#endif
