// A board viewer: an application of the kind that loads the library, with everything that a user of it sees.
#include <QApplication>
#include <QCommandLineParser>

#include "window/main_window.h"
#include "window/pictures.h"

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("qt_board"));
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Shows a printed-circuit board."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("board"), QStringLiteral("The board file to open."));
    const QCommandLineOption pictures(QStringLiteral("screenshot"),
                                      QStringLiteral("Write pictures of the window to a folder and end."),
                                      QStringLiteral("folder"));
    parser.addOption(pictures);
    parser.process(application);

    viewer::MainWindow window;
    if (!parser.positionalArguments().isEmpty()) {
        window.openBoard(parser.positionalArguments().constFirst());
    }
    window.show();
    if (parser.isSet(pictures)) {
        return viewer::takePictures(window, parser.value(pictures)) ? 0 : 1;
    }
    return QApplication::exec();
}
