// Tessaro: the connection manager's host application.
#include "HostFramework.h"
#include "MainWindow.h"
#include "PluginContainer.h"
#include "PluginHost.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenuBar>

#include <cstdio>

namespace {

struct Options
{
    QString scenario;
    QString demoDir;
    QString language = QStringLiteral("en");
    QString pluginRoot;
    int quitAfterMs = -1;
};

// Exit codes: 0 fine, 1 start-up failure, 2 bad command line.
enum { EXIT_BAD_ARGS = 2, EXIT_START_FAILED = 1 };

bool parseArguments(const QApplication& app, Options& opts, QString& error, bool& helpShown)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Tessaro mobile broadband connection manager, with the device manager plugin "
                       "and a simulated data card."));
    parser.addHelpOption();
    parser.addVersionOption();
    QCommandLineOption scenario(QStringLiteral("scenario"),
                                QStringLiteral("Start the simulated data card from scenario <file> (JSON)."),
                                QStringLiteral("file"));
    QCommandLineOption demo(QStringLiteral("demo"),
                            QStringLiteral("Play the scenario's steps and write one PNG per step into <dir>, "
                                           "then quit."),
                            QStringLiteral("dir"));
    QCommandLineOption lang(QStringLiteral("lang"), QStringLiteral("User interface language: en or de."),
                            QStringLiteral("code"), QStringLiteral("en"));
    QCommandLineOption root(QStringLiteral("plugin-root"),
                            QStringLiteral("Installation root holding plugins/ (default: beside bin/)."),
                            QStringLiteral("dir"));
    QCommandLineOption quitAfter(QStringLiteral("quit-after"),
                                 QStringLiteral("Quit after <ms> milliseconds (for scripted runs)."),
                                 QStringLiteral("ms"));
    parser.addOptions({scenario, demo, lang, root, quitAfter});

    helpShown = false;
    if (!parser.parse(app.arguments())) {
        error = parser.errorText();
        return false;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        helpShown = true;
        return true;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        std::printf("%s %s\n", qPrintable(app.applicationName()), qPrintable(app.applicationVersion()));
        helpShown = true;
        return true;
    }
    if (!parser.positionalArguments().isEmpty()) {
        error = QStringLiteral("unexpected argument '%1'").arg(parser.positionalArguments().first());
        return false;
    }
    opts.language = parser.value(lang);
    if (opts.language != QLatin1String("en") && opts.language != QLatin1String("de")) {
        error = QStringLiteral("unknown language '%1' (use en or de)").arg(opts.language);
        return false;
    }
    if (parser.isSet(scenario)) {
        opts.scenario = parser.value(scenario);
        if (!QFile::exists(opts.scenario)) {
            error = QStringLiteral("scenario file '%1' does not exist").arg(opts.scenario);
            return false;
        }
    }
    if (parser.isSet(demo))
        opts.demoDir = parser.value(demo);
    if (parser.isSet(root)) {
        opts.pluginRoot = parser.value(root);
        if (!QDir(opts.pluginRoot + QStringLiteral("/plugins")).exists()) {
            error = QStringLiteral("'%1' holds no plugins/ folder").arg(opts.pluginRoot);
            return false;
        }
    }
    if (parser.isSet(quitAfter)) {
        bool ok = false;
        opts.quitAfterMs = parser.value(quitAfter).toInt(&ok);
        if (!ok || opts.quitAfterMs < 0) {
            error = QStringLiteral("--quit-after takes milliseconds, got '%1'").arg(parser.value(quitAfter));
            return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tessaro"));
    QApplication::setApplicationVersion(QStringLiteral("1.0"));
    QApplication::setOrganizationName(QStringLiteral("Tessaro"));

    Options opts;
    QString error;
    bool helpShown = false;
    if (!parseArguments(app, opts, error, helpShown)) {
        std::fprintf(stderr, "tessaro: %s\nTry 'tessaro --help'.\n", qPrintable(error));
        return EXIT_BAD_ARGS;
    }
    if (helpShown)
        return 0;

    const QString appDir = QCoreApplication::applicationDirPath();
    const QString root = opts.pluginRoot.isEmpty() ? QDir(appDir + QStringLiteral("/..")).absolutePath()
                                                   : QDir(opts.pluginRoot).absolutePath();
    HostFramework::setPluginLibraryPath(root);
    HostFramework::setLanguageDir(root + QStringLiteral("/lang"));
    if (!opts.demoDir.isEmpty())
        HostFramework::setNonInteractive(true);

    QFile qss(QStringLiteral(":/tessaro/tessaro.qss"));
    if (qss.open(QIODevice::ReadOnly))
        app.setStyleSheet(QString::fromUtf8(qss.readAll()));

    MainWindow window;
    PluginContainer* container = HostFramework::createHost(&window, window.menuBar());
    PluginHost host(container);
    if (!host.load()) {
        std::fprintf(stderr, "tessaro: %s\n", qPrintable(host.errorString()));
        HostFramework::destroyHost();
        return EXIT_START_FAILED;
    }
    if (opts.language != QLatin1String("en"))
        host.changeLanguage(opts.language);
    window.attachPlugin(&host);
    window.show();
    host.frameShown();

    if (opts.quitAfterMs >= 0)
        QTimer::singleShot(opts.quitAfterMs, &app, &QCoreApplication::quit);

    const int rc = app.exec();
    host.shutdown();
    HostFramework::destroyHost();
    return rc;
}
