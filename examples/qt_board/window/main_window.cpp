#include "window/main_window.h"

#include <zelutil/file/hierarchy.h>
#include <zelutil/host/settings.h>
#include <zelutil/host/start.h>

#include <QContextMenuEvent>
#include <QDockWidget>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "actions/action_binder.h"
#include "board/board_reader.h"
#include "board/board_writer.h"
#include "table/property_panel.h"
#include "views/board_view.h"
#include "views/space_view.h"
#include "window/commands.h"
#include "window/editors.h"

namespace viewer {

namespace {

bool findsInstallation() {
    try {
        ZelU::File::Hierarchy::GetRoot();
        return true;
    } catch (const ZelU::File::Exceptions::HierarchyNotFound&) {
        return false;
    }
}

}  // namespace

MainWindow::MainWindow() {
    // Asked first: what is asked for later would not tell that there is no installation.
    const bool isInstalled = findsInstallation();
    build();
    buildDocks();
    buildStatusBar();
    commands_ = new Commands(*this);
    connect(&messages_, &MessageLog::told, this, &MainWindow::tell);
    editors_->add(boardView_, QStringLiteral("ucpedit"));
    editors_->add(spaceView_, QStringLiteral("brisk3d"));
    editors_->add(properties_, QStringLiteral("table"));
    connect(editors_, &Editors::switched, this, &MainWindow::followSwitch);
    connect(binder_, &ActionBinder::requested, commands_, &Commands::run);
    connect(&design_, &Design::boardChanged, this, &MainWindow::showTitle);
    binder_->fill(menuBar(), addToolBar(tr("Actions")));
    settingsSubscription_ =
        zelutil::host::onSettingsChanged([this](const std::set<std::string>& /*names*/) { applySettings(); });
    applySettings();
    binder_->setContext(QStringLiteral("ucpedit"));
    const bool startsInSpace = zelutil::host::get<std::string>("general::startup::start_editor", "") == "space";
    showEditor(startsInSpace ? static_cast<QWidget*>(spaceView_) : boardView_);
    tellStart();
    if (!isInstalled) {
        showBanner(tr("No installation was found, so there are no actions and no settings. See \"Messages\"."));
        messages_.warn(QString::fromStdString(zelutil::host::diagnose()));
    }
    showTitle();
}

MainWindow::~MainWindow() {
    // Widgets that go one after the other hand the focus on and change tabs, which is nothing to follow any more.
    hide();
    tabs_->disconnect(this);
    editors_->disconnect();
}

void MainWindow::build() {
    editors_ = new Editors(this);
    binder_ = new ActionBinder(this);
    boardView_ = new BoardView(design_);
    spaceView_ = new SpaceView(design_);
    tabs_ = new QTabWidget;
    tabs_->setDocumentMode(true);
    tabs_->addTab(boardView_, contextTitle(QStringLiteral("ucpedit")));
    tabs_->addTab(spaceView_, contextTitle(QStringLiteral("brisk3d")));
    connect(tabs_, &QTabWidget::currentChanged, this, [this] { showEditor(tabs_->currentWidget()); });
    banner_ = new QLabel;
    banner_->setObjectName(QStringLiteral("banner"));
    banner_->setWordWrap(true);
    banner_->setMargin(8);
    banner_->setStyleSheet(QStringLiteral("background: #fff0c2; color: #4a3200; border-bottom: 1px solid #d8b44a;"));
    banner_->hide();
    auto* const central = new QWidget;
    auto* const layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(banner_);
    layout->addWidget(tabs_);
    setCentralWidget(central);
    resize(1120, 700);
}

void MainWindow::buildDocks() {
    properties_ = new PropertyPanel(design_);
    auto* const table = new QDockWidget(tr("Properties"), this);
    table->setWidget(properties_);
    table->setFeatures(QDockWidget::DockWidgetMovable);
    addDockWidget(Qt::RightDockWidgetArea, table);
    resizeDocks({table}, {380}, Qt::Horizontal);
    messageList_ = new QListWidget;
    messageList_->setObjectName(QStringLiteral("messageList"));
    messageList_->setWordWrap(true);
    auto* const messages = new QDockWidget(tr("Messages"), this);
    messages->setObjectName(QStringLiteral("messageDock"));
    messages->setWidget(messageList_);
    addDockWidget(Qt::BottomDockWidgetArea, messages);
    messages->hide();
}

void MainWindow::buildStatusBar() {
    // Labels instead of the bar's own text, which every menu that is pointed at would clear.
    status_ = new QLabel;
    status_->setObjectName(QStringLiteral("status"));
    status_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    pointer_ = new QLabel;
    warnings_ = new QToolButton;
    warnings_->setObjectName(QStringLiteral("warnings"));
    warnings_->setAutoRaise(true);
    warnings_->hide();
    statusBar()->addWidget(status_, 1);
    statusBar()->addPermanentWidget(pointer_);
    statusBar()->addPermanentWidget(warnings_);
    connect(warnings_, &QToolButton::clicked, this, &MainWindow::showMessages);
    connect(boardView_, &BoardView::pointed, this, [this](QPointF point) {
        pointer_->setText(lengthTextWithUnit(point.x(), settings_) + QStringLiteral(", ") +
                          lengthTextWithUnit(point.y(), settings_));
    });
    connect(&design_, &Design::viewChanged, this, [this] { status_->setText(design_.describe(design_.selection())); });
}

void MainWindow::applySettings() {
    QStringList complaints;
    settings_ = readViewSettings(&complaints);
    for (const QString& complaint : complaints) {
        messages_.warn(complaint);
    }
    boardView_->setSettings(settings_);
    spaceView_->setSettings(settings_);
    properties_->setSettings(settings_);
    design_.setUndoLevels(settings_.undoLevels);
}

/// Tells what the start found in the user's file, and which shortcuts make no key.
void MainWindow::tellStart() {
    for (const zelutil::host::StartWarning& warning : zelutil::host::startWarnings()) {
        messages_.warn(QString::fromStdString(warning.text));
    }
    for (const QString& sentence : shortcutsWithoutKey()) {
        messages_.warn(sentence);
    }
}

void MainWindow::tell(const QString& text, bool isWarning) {
    status_->setText(text);
    status_->setToolTip(text);
    messageList_->addItem(text);
    messageList_->scrollToBottom();
    if (isWarning) {
        warnings_->setText(tr("Warnings: %1").arg(messages_.warnings()));
        warnings_->show();
    }
}

void MainWindow::showBanner(const QString& text) {
    banner_->setText(text);
    banner_->show();
}

QString MainWindow::statusText() const { return status_->text(); }

void MainWindow::showMessages() {
    auto* const dock = findChild<QDockWidget*>(QStringLiteral("messageDock"));
    dock->setVisible(!dock->isVisible());
}

bool MainWindow::openBoard(const QString& path) {
    const ReadBoard read = readBoardFile(path);
    const QString name = QFileInfo(path).fileName();
    if (!read.board) {
        showBanner(tr("%1 could not be opened. %2").arg(name, read.errors.join(u' ')));
        messages_.warn(banner_->text());
        return false;
    }
    banner_->hide();
    design_.open(*read.board, path);
    boardView_->zoomToFit();
    spaceView_->zoomToFit();
    messages_.tell(tr("%1: %2 pads, %3 tracks.").arg(name).arg(read.board->pads.size()).arg(read.board->tracks.size()));
    return true;
}

bool MainWindow::saveBoard(const QString& path) {
    const QString failure = writeBoardFile(design_.board(), path);
    if (!failure.isEmpty()) {
        messages_.warn(tr("The board could not be saved: %1.").arg(failure));
        return false;
    }
    design_.setSaved(path);
    messages_.tell(tr("Saved %1.").arg(QFileInfo(path).fileName()));
    return true;
}

bool MainWindow::savePicture(const QString& path) { return grab().save(path); }

void MainWindow::showEditor(QWidget* editor) {
    if (editor == properties_) {
        properties_->setFocus();
    } else {
        tabs_->setCurrentWidget(editor);
        editor->setFocus();
    }
    editors_->switchTo(editor);
}

/// The switch may have been announced by somebody else than this window.
void MainWindow::followSwitch(const QString& context) {
    if (editors_->active() != properties_) {
        tabs_->setCurrentWidget(editors_->active());
    }
    binder_->setContext(context);
}

void MainWindow::contextMenuEvent(QContextMenuEvent* event) {
    auto* const menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("contextMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    binder_->fillContextMenu(menu);
    menu->popup(event->globalPos());
}

void MainWindow::showTitle() {
    const QString name = design_.path().isEmpty() ? tr("No board") : QFileInfo(design_.path()).fileName();
    setWindowTitle(tr("%1[*] - Board viewer").arg(name));
    setWindowModified(design_.isModified());
}

}  // namespace viewer
