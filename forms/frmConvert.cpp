#include "forms/frmConvert.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QStatusBar>
#include <QUrl>

#include "control/Settings.h"
#include "control/cmdConvert.h"
#include "forms/CheckBoard.h"
#include "forms/MessageBox.h"
#include "forms/ProgressArea.h"
#include "forms/binding.h"
#include "forms/fonts.h"
#include "forms/frmOptions.h"
#include "forms/text.h"
#include "platform/paths.h"

namespace tessaly {

namespace {

constexpr double kCaptionPoints = 9.75;
constexpr double kCheckPoints = 8.25;
constexpr double kButtonPoints = 14.25;

constexpr QSize kFormSize(15915, 10170);
constexpr QSize kLeastSize(12600, 6000);
constexpr QSize kFrameSize(3135, 3135);

// Who stands right of the fields moves with the right edge.
constexpr Gain kMovesRight{.left = 1, .right = 1};
constexpr Gain kGrowsRight{.right = 1};

// A caption as a screen reader tells it: no mnemonic, no colon.
QString Spoken(QString caption) {
    caption.remove(QLatin1Char('&'));
    if (caption.endsWith(QLatin1Char(':'))) caption.chop(1);
    return caption;
}

QLabel* AddLabel(QWidget* form, const char* name, const char* caption, QWidget* buddy) {
    auto* const label = new QLabel(QString::fromLatin1(caption), form);
    label->setObjectName(QString::fromLatin1(name));
    label->setFont(HeavyFont(kCaptionPoints));
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(buddy);
    buddy->setAccessibleName(Spoken(label->text()));
    return label;
}

// What a disabled field shows is there to be read: paler than other text, but not faint.
void DisableReadably(QLineEdit* box) {
    constexpr float kPaler = 0.7F;
    QPalette palette = box->palette();
    QColor text = palette.color(QPalette::Active, QPalette::Text);
    text.setAlphaF(kPaler);
    palette.setColor(QPalette::Disabled, QPalette::Text, text);
    box->setPalette(palette);
    box->setEnabled(false);
}

}  // namespace

frmConvert::frmConvert(ConversionState& state)
    : state_(state), handlers_(this), options_(new frmOptions(state, handlers_, this)) {
    setObjectName(QStringLiteral("frmConvert"));
    // On a small screen the form can be scrolled.
    auto* const scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setWidgetResizable(true);
    scroll->setFocusPolicy(Qt::NoFocus);
    auto* const form = new QWidget(scroll);
    form->setObjectName(QStringLiteral("form"));
    auto* const layout = new DesignLayout(form, kFormSize, kLeastSize);
    BuildMenu();
    BuildFolders(form, layout);
    BuildCounts(form, layout);
    BuildFrame(form, layout);
    BuildButtons(form, layout);
    txtArea_ = new ProgressArea(state.txtArea, form);
    txtArea_->setObjectName(QStringLiteral("txtArea"));
    txtArea_->setAccessibleName(QStringLiteral("Progress"));
    layout->Put(txtArea_, {120, 4440, 15615, 5655}, {.right = 1, .bottom = 1});
    scroll->setWidget(form);
    setCentralWidget(scroll);
    status_ = std::make_unique<StatusLine>(state, statusBar());
    OrderTabs(form);
    HookIn();
    TakeFirstSize(form);
}

frmConvert::~frmConvert() = default;

bool frmConvert::Load() {
    handlers_.Run(QStringLiteral("reading the settings"), [this] { Form_Load(state_); });
    return !handlers_.HasFailed();
}

void frmConvert::BuildMenu() {
    QMenu* const mnuFile = menuBar()->addMenu(QStringLiteral("&File"));
    mnuFile->setObjectName(QStringLiteral("mnuFile"));
    QAction* const mnuCheck = mnuFile->addAction(QStringLiteral("&Check board\u2026"));
    mnuCheck->setObjectName(QStringLiteral("mnuCheck"));
    connect(mnuCheck, &QAction::triggered, this, [this] { Check(); });
    QAction* const mnuExit = mnuFile->addAction(QStringLiteral("E&xit"));
    mnuExit->setObjectName(QStringLiteral("mnuExit"));
    QAction* const mnuOptions = menuBar()->addAction(QStringLiteral("&Options"));
    mnuOptions->setObjectName(QStringLiteral("mnuOptions"));
    connect(mnuExit, &QAction::triggered, this, [this] { Exit(); });
    connect(mnuOptions, &QAction::triggered, this, [this] { ShowOptions(); });
}

void frmConvert::BuildFolders(QWidget* form, DesignLayout* layout) {
    const struct {
        const char* name;
        TextField& field;
        const char* label;
        const char* caption;
        EventHandler lostFocus;  // none: the field is disabled and follows another one
    } rows[] = {
        {"txtDiscusRootFolder", state_.txtDiscusRootFolder, "Label10",
         "Local &Root:", txtDiscusRootFolder_LostFocus},
        {"txtDiscusMessageFolder", state_.txtDiscusMessageFolder, "Label5", "Discus Messages:", nullptr},
        {"txtDiscusSecureMessageFolder", state_.txtDiscusSecureMessageFolder, "Label7",
         "Discus Secure:", nullptr},
        {"txtDiscusMainFolder", state_.txtDiscusMainFolder, "Label6", "Discus Main:", nullptr},
        {"txtmybbOutputFolder", state_.txtmybbOutputFolder, "Label8",
         "mybb O&utput:", txtmybbOutputFolder_LostFocus},
        {"txtmybbAttachmentsFolder", state_.txtmybbAttachmentsFolder, "Label9", "mybb Attachments:", nullptr},
        {"txtDiscusWebsite", state_.txtDiscusWebsite, "lblDiscusWebsite",
         "Discus &Website:", txtDiscusWebsite_LostFocus},
        {"txtmybbForumAddr", state_.txtmybbForumAddr, "Label11",
         "mybb Foru&m Addr:", txtmybbForumAddr_LostFocus},
    };
    constexpr int kBetweenRows = 480;
    int top = 0;
    for (const auto& row : rows) {
        QLineEdit* const box = AddText(form, row.name, row.field);
        layout->Put(box, {2760, top, 9375, 375}, kGrowsRight);
        layout->Put(AddLabel(form, row.label, row.caption, box), {120, top, 2580, 375});
        if (row.lostFocus != nullptr) {
            CheckWhenLeft(box, row.lostFocus);
        } else {
            DisableReadably(box);
        }
        top += kBetweenRows;
    }
}

void frmConvert::BuildCounts(QWidget* form, DesignLayout* layout) {
    QLineEdit* const groups = AddText(form, "txtDefaultGroups", state_.txtDefaultGroups);
    layout->Put(groups, {2760, 3840, 855, 375});
    layout->Put(AddLabel(form, "Label13", "Default User &Groups:", groups), {120, 3840, 2580, 375});
    CheckWhenLeft(groups, txtDefaultGroups_LostFocus);

    auto* const processed = new QComboBox(form);
    processed->setObjectName(QStringLiteral("cboProcessedFolders"));
    processed->setAccessibleName(QStringLiteral("Processed folders"));
    Bind(state_.cboProcessedFolders, processed);
    layout->Put(processed, {3840, 3840, 2775, 315}, {.right = 0.5});

    QLineEdit* const count = AddText(form, "txtMsgCount", state_.txtMsgCount);
    count->setAccessibleName(QStringLiteral("Posts converted"));
    DisableReadably(count);
    layout->Put(count, {6720, 3840, 2175, 375}, {.left = 0.5, .right = 1});

    QLineEdit* const split = AddText(form, "txtSplitMBSize", state_.txtSplitMBSize);
    layout->Put(split, {10920, 3840, 855, 375}, kMovesRight);
    QLabel* const splitLabel = AddLabel(form, "Label12", "Max MB &Size For Split Files", split);
    splitLabel->setWordWrap(true);
    layout->Put(splitLabel, {8955, 3765, 1950, 570}, kMovesRight);
    CheckWhenLeft(split, txtSplitMBSize_LostFocus);
}

void frmConvert::BuildFrame(QWidget* form, DesignLayout* layout) {
    auto* const frame = new QFrame(form);
    frame->setObjectName(QStringLiteral("Frame1"));
    // The style's own frame loses its upper edge at 125 and 150 per cent.
    frame->setFrameStyle(QFrame::Box | QFrame::Sunken);
    auto* const inside = new DesignLayout(frame, kFrameSize, kFrameSize);

    QLineEdit* const admin = AddText(frame, "txtDefaultAdmin", state_.txtDefaultAdmin);
    inside->Put(admin, {240, 480, 2775, 375});
    inside->Put(AddLabel(frame, "Label1", "mybb Default &Admin", admin), {240, 120, 2775, 330});
    CheckWhenLeft(admin, txtDefaultAdmin_LostFocus);

    QLineEdit* const users = AddText(frame, "txtDefaultUsers", state_.txtDefaultUsers);
    inside->Put(users, {240, 1200, 855, 375});
    inside->Put(AddLabel(frame, "Label15", "mybb &Default Users", users), {240, 870, 2775, 315});
    CheckWhenLeft(users, txtDefaultUsers_LostFocus);

    AddCheck(frame, inside, "chkShowProgress", "Show &Progress", state_.chkShowProgress,
             {240, 1800, 2655, 255}, chkShowProgress_Click);
    AddCheck(frame, inside, "chkLogProgress", "Log Progress &to File", state_.chkLogProgress,
             {240, 2040, 2775, 255}, chkLogProgress_Click);

    auto* const charset = new QComboBox(frame);
    charset->setObjectName(QStringLiteral("cboCharset"));
    charset->setEditable(true);
    charset->setInsertPolicy(QComboBox::NoInsert);
    charset->setCompleter(nullptr);
    const std::u16string first = state_.cboCharset.Text;
    for (const std::u16string& name : CharsetNames()) charset->addItem(ToQt(name));
    state_.cboCharset.Text = first;
    Bind(state_.cboCharset, charset);
    inside->Put(charset, {1200, 2520, 1695, 315});
    inside->Put(AddLabel(frame, "Label14", "C&harset:", charset), {120, 2520, 1065, 315});
    layout->Put(frame, {12600, 0, 3135, 3135}, kMovesRight);
}

void frmConvert::BuildButtons(QWidget* form, DesignLayout* layout) {
    QPushButton* const browseRoot =
        AddButton(form, "cmdBrowseRoot", "...", QStringLiteral("picking the root folder"),
                  [this] { cmdBrowseRoot_Click(state_); });
    browseRoot->setAccessibleName(QStringLiteral("Browse for Local Root"));
    layout->Put(browseRoot, {12120, 0, 375, 375}, kMovesRight);
    QPushButton* const browseOutput =
        AddButton(form, "cmdBrowseOutput", "...", QStringLiteral("picking the output folder"),
                  [this] { cmdBrowseOutput_Click(state_); });
    browseOutput->setAccessibleName(QStringLiteral("Browse for mybb Output"));
    layout->Put(browseOutput, {12120, 1920, 375, 375}, kMovesRight);

    QPushButton* const help =
        AddButton(form, "cmdHelp", "&View Documentation", QStringLiteral("opening the documentation"),
                  [this] { OpenManual(); });
    help->setFont(HeavyFont(kCaptionPoints));
    layout->Put(help, {12840, 3240, 2535, 495}, kMovesRight);

    QPushButton* const convert = AddButton(form, "cmdConvert", "&Convert",
                                           QStringLiteral("converting the board"), [this] { Convert(); });
    convert->setFont(HeavyFont(kButtonPoints));
    layout->Put(convert, {12480, 3840, 1575, 525}, kMovesRight);
    QPushButton* const cancel = AddButton(form, "cmdCancel", "Cance&l", QStringLiteral("cancelling the run"),
                                          [this] { cmdCancel_Click(state_); });
    cancel->setFont(HeavyFont(kButtonPoints));
    layout->Put(cancel, {14160, 3840, 1575, 525}, kMovesRight);
    BindButton(state_.cmdConvert, convert);
    BindButton(state_.cmdCancel, cancel);
}

void frmConvert::OrderTabs(QWidget* form) {
    const char* const names[] = {
        "cmdConvert",          "cmdCancel",       "txtDiscusRootFolder", "cmdBrowseRoot",
        "txtmybbOutputFolder", "cmdBrowseOutput", "txtDiscusWebsite",    "txtmybbForumAddr",
        "txtDefaultAdmin",     "txtDefaultUsers", "chkShowProgress",     "chkLogProgress",
        "cboCharset",          "cmdHelp",         "txtDefaultGroups",    "cboProcessedFolders",
        "txtSplitMBSize",      "txtArea"};
    QWidget* before = nullptr;
    for (const char* const name : names) {
        auto* const widget = form->findChild<QWidget*>(QString::fromLatin1(name));
        if (before != nullptr) setTabOrder(before, widget);
        before = widget;
    }
    form->findChild<QWidget*>(QStringLiteral("cmdConvert"))->setFocus();
}

void frmConvert::HookIn() {
    state_.Caption.Changed = [this] { setWindowTitle(ToQt(state_.Caption.Text)); };
    state_.Caption.Changed();
    state_.ShowMessage = [this](std::u16string_view text) {
        ++boxesShown_;
        status_->Show();
        ShowBox(this, ToQt(text));
    };
    state_.SetFocus = [this](TextField& field) { GiveFocusBack(field); };
    state_.ToolboxA.HandleEvents = [this] {
        status_->Refresh();
        QCoreApplication::processEvents();
        handlers_.LeaveAfterFailure();
    };
    state_.ToolboxA.PickFolder = [this](std::u16string_view start) { return PickFolder(start); };
    state_.ToolboxA.WaitBegun = [this] { setCursor(Qt::BusyCursor); };
    state_.ToolboxA.WaitEnded = [this] { unsetCursor(); };
}

// The form's area has the size of the design, as far as the screen allows; menu and status line come on top.
void frmConvert::TakeFirstSize(QWidget* form) {
    const QSize area = form->layout()->sizeHint();
    const QSize around(0, menuBar()->sizeHint().height() + statusBar()->sizeHint().height());
    // The window's frame, which is not there yet, needs room too.
    constexpr QSize kFrame(16, 40);
    resize((area + around).boundedTo(screen()->availableSize() - kFrame));
}

QLineEdit* frmConvert::AddText(QWidget* form, const char* name, TextField& field) {
    auto* const box = new QLineEdit(form);
    box->setObjectName(QString::fromLatin1(name));
    Bind(field, box);
    boxes_[&field] = box;
    return box;
}

void frmConvert::AddCheck(QWidget* frame, DesignLayout* layout, const char* name, const char* caption,
                          CheckField& field, Place place, EventHandler click) {
    auto* const box = new QCheckBox(QString::fromLatin1(caption), frame);
    box->setObjectName(QString::fromLatin1(name));
    box->setFont(HeavyFont(kCheckPoints));
    Bind(field, box);
    connect(box, &QCheckBox::clicked, this, [this, click] {
        handlers_.Run(QStringLiteral("saving a setting"), [this, click] { click(state_); });
    });
    layout->Put(box, place);
}

QPushButton* frmConvert::AddButton(QWidget* form, const char* name, const char* caption, const QString& doing,
                                   std::function<void()> handler) {
    auto* const button = new QPushButton(QString::fromLatin1(caption), form);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this,
            [this, button, doing, handler = std::move(handler)] { Click(button, doing, handler); });
    return button;
}

// A button that goes out of use would hand the focus to the next field, whose check would run when the
// operator moves on. The area has no check; from there the focus comes back to the button that is of use
// again.
void frmConvert::BindButton(ButtonField& field, QPushButton* button) {
    field.Changed = [this, &field, button] {
        if (!field.Enabled && focusWidget() == button) txtArea_->setFocus();
        button->setEnabled(field.Enabled);
        if (field.Enabled && focusWidget() == txtArea_) button->setFocus();
    };
    button->setEnabled(field.Enabled);
}

void frmConvert::CheckWhenLeft(QLineEdit* box, EventHandler lostFocus) {
    checks_[box] = lostFocus;
    box->installEventFilter(this);
}

bool frmConvert::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::FocusOut || isGivingFocusBack_ || isClosed_) return false;
    // A field is not left when a box, a menu or another program comes to the front.
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
        reason == Qt::MenuBarFocusReason)
        return false;
    left_.push_back(watched);
    // Not from here: a box must not open while the focus is on its way.
    QMetaObject::invokeMethod(
        this, [this] { CheckLeftFields(); }, Qt::QueuedConnection);
    return false;
}

// Runs the checks of the fields that were left, one after the other. False when one of them had something to
// say.
bool frmConvert::CheckLeftFields() {
    if (isChecking_) return true;
    isChecking_ = true;
    const int before = boxesShown_;
    while (!left_.empty()) {
        QObject* const field = left_.front();
        left_.pop_front();
        handlers_.Run(QStringLiteral("checking and saving the field \"%1\" (settings file: %2)")
                          .arg(static_cast<QWidget*>(field)->accessibleName(),
                               ToQt(platform::WithNativeSeparators(state_.IniFile))),
                      [this, field] { checks_.at(field)(state_); });
    }
    isChecking_ = false;
    return boxesShown_ == before && !handlers_.HasFailed();
}

// A click by its mnemonic leaves the focus where it was: it is moved, so that the field left is checked
// first. When the check shows a box, the click is lost in it.
void frmConvert::Click(QWidget* clicked, const QString& doing, const std::function<void()>& handler) {
    clicked->setFocus(Qt::ShortcutFocusReason);
    if (!CheckLeftFields()) return;
    handlers_.Run(doing, handler);
}

void frmConvert::Convert() {
    status_->Begin();
    isConverting_ = true;
    cmdConvert_Click(state_);
    isConverting_ = false;
    status_->End();
}

// Not beside a run, whose fields are in use.
void frmConvert::Check() {
    if (isConverting_) return;
    handlers_.Run(QStringLiteral("checking the board"), [this] {
        constexpr int kMilliseconds = 15000;
        const QString report = CheckBoard(this, state_);
        if (report.isEmpty()) return;
        statusBar()->showMessage(
            QStringLiteral("The report of the check is ") + QDir::toNativeSeparators(report), kMilliseconds);
    });
}

void frmConvert::Exit() {
    state_.CancelRequested = true;
    close();
}

void frmConvert::ShowOptions() {
    options_->exec();
}

void frmConvert::OpenManual() const {
    const std::u16string file =
        ToolboxLibrary::AddBackslash(state_.ProgramFolder) + u"Docs\\Tessaly Conversion.pdf";
    QDesktopServices::openUrl(QUrl::fromLocalFile(ToQt(platform::WithNativeSeparators(file))));
}

std::u16string frmConvert::PickFolder(std::u16string_view start) {
    const QString folder =
        QFileDialog::getExistingDirectory(this, QString(), ToQt(platform::WithNativeSeparators(start)));
    if (folder.isEmpty()) return {};
    return platform::ToPathText(platform::ToNative(FromQt(QDir::toNativeSeparators(folder))));
}

void frmConvert::GiveFocusBack(TextField& field) {
    isGivingFocusBack_ = true;
    boxes_.at(&field)->setFocus();
    isGivingFocusBack_ = false;
}

// A run that is going on goes on; the program ends behind it.
void frmConvert::closeEvent(QCloseEvent* event) {
    isClosed_ = true;
    options_->hide();
    event->accept();
    handlers_.EndProgram();
}

}  // namespace tessaly
