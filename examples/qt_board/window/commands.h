#ifndef QT_BOARD_WINDOW_COMMANDS_H
#define QT_BOARD_WINDOW_COMMANDS_H

#include <QMap>
#include <QObject>
#include <QString>
#include <functional>

class QDialog;

namespace viewer {

class MainWindow;

/// Runs the commands of the catalogue in the window.
class Commands : public QObject {
    Q_OBJECT

public:
    explicit Commands(MainWindow& window);

    /// Runs the command in an editor of that context. One that the viewer does not know is told, since the catalogue
    /// may be another product's.
    void run(const QString& command, const QString& context);

private:
    void add(const char* command, std::function<void()> call);
    void addFiles();
    void addEditing();
    void addViews();
    void addLayers();
    void addSpace();
    void addTable();
    void addOptions();

    static void open(QDialog* dialog);
    void openBoard();
    void saveBoard(bool asks);
    void savePicture();
    void copyText();
    void highlightNet();
    void toggle(const char* setting);
    void zoom(bool in);
    bool isInSpace() const;

    MainWindow& window_;
    QMap<QString, std::function<void()>> calls_;
    QString context_;
};

}  // namespace viewer

#endif
