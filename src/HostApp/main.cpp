// Tessaro: the connection manager's host application.
#include "Change.h"
#include "DemoPlayer.h"
#include "HostFramework.h"
#include "MainWindow.h"
#include "PluginContainer.h"
#include "PluginHost.h"
#include "SimControl.h"
#include "SimulatorPanel.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenuBar>

#include <cstdio>
#include <memory>

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

// Parsed before the application object exists, so that --help and bad arguments work without a display.
bool parseArguments(const QStringList& arguments, Options& opts, QString& error, bool& helpShown)
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
    if (!parser.parse(arguments)) {
        error = parser.errorText();
        return false;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        std::fputs(qPrintable(parser.helpText()), stdout);
        helpShown = true;
        return true;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        std::printf("tessaro 1.0\n");
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
    Options opts;
    QString error;
    bool helpShown = false;
    bool parsed = false;
    {
        // A plain core application for the parser: --help and bad arguments need no display.
        QCoreApplication parsing(argc, argv);
        parsed = parseArguments(QCoreApplication::arguments(), opts, error, helpShown);
    }
    if (!parsed) {
        std::fprintf(stderr, "tessaro: %s\nTry 'tessaro --help'.\n", qPrintable(error));
        return EXIT_BAD_ARGS;
    }
    if (helpShown)
        return 0;
    // The demo renders into images only: it needs no display.
    if (!opts.demoDir.isEmpty() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tessaro"));
    QApplication::setApplicationVersion(QStringLiteral("1.0"));
    QApplication::setOrganizationName(QStringLiteral("Tessaro"));

    // A malformed scenario stops everything before any window opens.
    if (!opts.scenario.isEmpty() && !zelk::sim::loadScenario(opts.scenario, &error)) {
        std::fprintf(stderr, "tessaro: %s\n", qPrintable(error));
        return EXIT_START_FAILED;
    }

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

    // The interface language is in place before the plugin builds any text.
    if (!Change::LoadLanguage(opts.language))
        std::fprintf(stderr, "tessaro: no language file for '%s'; showing text keys\n",
                     qPrintable(opts.language));

    MainWindow window;
    PluginContainer* container = HostFramework::createHost(&window, window.menuBar());
    PluginHost host(container);
    if (!host.load()) {
        std::fprintf(stderr, "tessaro: %s\n", qPrintable(host.errorString()));
        HostFramework::destroyHost();
        return EXIT_START_FAILED;
    }
    window.addSidePanel(new SimulatorPanel, QStringLiteral("Simulated data card"));
    window.attachPlugin(&host);
    window.show();
    host.frameShown();

    std::unique_ptr<DemoPlayer> demo;
    if (!opts.demoDir.isEmpty()) {
        demo = std::make_unique<DemoPlayer>(&window, &host, opts.demoDir);
        QObject::connect(demo.get(), &DemoPlayer::finished, &app, [&app](bool ok) { app.exit(ok ? 0 : 1); });
        demo->start();
    } else {
        ScenarioTimeline::startTimeline(&app);
    }
    if (opts.quitAfterMs >= 0)
        QTimer::singleShot(opts.quitAfterMs, &app, &QCoreApplication::quit);

    const int rc = app.exec();
    host.shutdown();
    HostFramework::destroyHost();
    return rc;
}
