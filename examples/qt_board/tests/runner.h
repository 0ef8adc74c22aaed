#ifndef QT_BOARD_TESTS_RUNNER_H
#define QT_BOARD_TESTS_RUNNER_H

#include <QObject>
#include <QString>
#include <functional>
#include <memory>

/// Runs tests of the viewer. The library reads its files once in a process, so each test function gets a process, and a
/// user's home, of its own. Functions whose names begin with "again" run only when another one restarts the program.
namespace viewer::test {

/// Makes a class of tests known under the name of its file.
class Registration {
public:
    Registration(const char* name, std::function<std::unique_ptr<QObject>()> make);
};

/// Runs a function of the same class in a new process of the same user, and returns whether it passed.
bool restartWith(const char* function);

/// Returns the user's home of this process.
QString home();

/// Returns the file that the library reads and writes for this user.
QString userFile();

/// Gives the user that file, before anything has been asked of the library.
void writeUserFile(const QByteArray& bytes);

/// Returns the bytes of a file; empty for none.
QByteArray contents(const QString& path);

/// Returns the path of a copy of the example board in the user's home.
QString boardCopy();

}  // namespace viewer::test

#endif
