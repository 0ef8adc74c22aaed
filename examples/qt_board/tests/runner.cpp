#include "runner.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMap>
#include <QMetaMethod>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <cstdio>

namespace viewer::test {

namespace {

using Make = std::function<std::unique_ptr<QObject>()>;

QMap<QString, Make>& registry() {
    static QMap<QString, Make> classes;
    return classes;
}

QString runningClass;

bool isTest(const QMetaMethod& method) {
    return method.methodType() == QMetaMethod::Slot && method.access() == QMetaMethod::Private &&
           method.parameterCount() == 0 && !method.name().startsWith("again") && !method.name().endsWith("_data");
}

/// Returns whether the process ended by itself, with success. What it printed is printed.
bool runProcess(const QStringList& arguments, const QProcessEnvironment& environment) {
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    const bool hasEnded = process.waitForFinished(240'000);
    return hasEnded && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool runFresh(const QString& name, const QString& function) {
    const QTemporaryDir home;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOMEDRIVE"), QStringLiteral("Z:"));
    environment.insert(QStringLiteral("HOMEPATH"), home.path());
    for (const char* const variable : {"QTXROOT", "QTX_ROOT", "QTXINSTDIR", "QTX_SITE", "QTX_ZELUTIL_DEBUG",
                                       "tessel_settings", "regression_testing"}) {
        environment.remove(QString::fromLatin1(variable));
    }
    return runProcess({name, function}, environment);
}

/// Runs every test of the class. Returns the number of those that failed.
int runAll(const QString& name) {
    const std::unique_ptr<QObject> tests = registry()[name]();
    const QMetaObject& meta = *tests->metaObject();
    int failed = 0;
    int passed = 0;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (isTest(meta.method(i))) {
            const bool isGood = runFresh(name, QString::fromLatin1(meta.method(i).name()));
            ++(isGood ? passed : failed);
        }
    }
    std::printf("%s: %d passed, %d failed\n", qPrintable(name), passed, failed);
    // No test at all is no success.
    return passed == 0 ? 1 : failed;
}

int runOne(int argc, char** argv) {
    runningClass = QString::fromLocal8Bit(argv[1]);
    const std::unique_ptr<QObject> tests = registry()[runningClass]();
    argv[1] = argv[0];
    return QTest::qExec(tests.get(), argc - 1, argv + 1);
}

}  // namespace

Registration::Registration(const char* name, Make make) { registry()[QString::fromLatin1(name)] = std::move(make); }

bool restartWith(const char* function) {
    return runProcess({runningClass, QString::fromLatin1(function)}, QProcessEnvironment::systemEnvironment());
}

QString home() { return qEnvironmentVariable("HOMEPATH"); }

QString userFile() { return home() + QStringLiteral("/pcbenv/tessel/tessel_settings.cfg"); }

void writeUserFile(const QByteArray& bytes) {
    QDir().mkpath(home() + QStringLiteral("/pcbenv/tessel"));
    QFile file(userFile());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("The user's file cannot be written.");
    }
}

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString boardCopy() {
    const QString copy = home() + QStringLiteral("/node.board");
    QFile::copy(QCoreApplication::applicationDirPath() + QStringLiteral("/../../../boards/sensor_node.board"), copy);
    return copy;
}

}  // namespace viewer::test

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const QString name = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    if (!viewer::test::registry().contains(name)) {
        std::fprintf(stderr, "There are no tests \"%s\".\n", qPrintable(name));
        return 2;
    }
    return argc > 2 ? viewer::test::runOne(argc, argv) : viewer::test::runAll(name);
}
