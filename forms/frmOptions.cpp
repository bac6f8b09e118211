#include "forms/frmOptions.h"

#include <QCheckBox>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QTabWidget>

#include "control/Settings.h"
#include "forms/DesignLayout.h"
#include "forms/Handlers.h"
#include "forms/binding.h"
#include "forms/fonts.h"

namespace tessaly {

namespace {

constexpr double kPoints = 8.25;
constexpr QSize kFormSize(6150, 4920);

struct Option {
    QString name;
    QString caption;
    QString toolTip;
    Place place;
    CheckField& field;
    void (*click)(ConversionState&);
};

}  // namespace

frmOptions::frmOptions(ConversionState& state, Handlers& handlers, QWidget* owner)
    : QDialog(owner), state_(state), handlers_(handlers), tbsOptions_(new QTabWidget(this)) {
    setObjectName(QStringLiteral("frmOptions"));
    setWindowTitle(QStringLiteral("Options"));
    auto* const layout = new DesignLayout(this, kFormSize, kFormSize);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    tbsOptions_->setObjectName(QStringLiteral("tbsOptions"));
    tbsOptions_->addTab(new QWidget(tbsOptions_), QStringLiteral("Files"));
    tbsOptions_->setTabToolTip(0, QStringLiteral("Set Options File Creation"));
    layout->Put(tbsOptions_, {105, 120, 5895, 4245});
    picOptions_.push_back(BuildPanel());
    layout->Put(picOptions_.front(), {210, 480, 5685, 3780});
    picOptions_.front()->raise();
    BuildButtons(layout);

    connect(tbsOptions_, &QTabWidget::currentChanged, this, [this](int selected) { ShowPanel(selected); });
    ShowPanel(tbsOptions_->currentIndex());
    auto* const nextTab = new QShortcut(QKeySequence(QStringLiteral("Ctrl+Tab")), this);
    connect(nextTab, &QShortcut::activated, this, [this] { SelectNextTab(); });
    MoveToCentre();
}

QWidget* frmOptions::BuildPanel() {
    constexpr QSize kSize(5685, 3780);
    auto* const panel = new QWidget(this);
    panel->setObjectName(QStringLiteral("picOptions"));
    auto* const layout = new DesignLayout(panel, kSize, kSize);
    auto* const advice = new QLabel(QStringLiteral("All selection here will dramatically increase conversion "
                                                   "time and should only be used when absolutely needed."),
                                    panel);
    advice->setObjectName(QStringLiteral("Label1"));
    advice->setFont(PlainFont(kPoints));
    advice->setWordWrap(true);
    advice->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    layout->Put(advice, {480, 120, 4575, 615});
    layout->Put(BuildFrame(panel), {360, 720, 4695, 2850});
    return panel;
}

QWidget* frmOptions::BuildFrame(QWidget* panel) {
    constexpr QSize kSize(4695, 2850);
    const Option options[] = {
        {QStringLiteral("chkCreateAttachments"),
         QStringLiteral("Create &Attachment Files"),
         QStringLiteral("Create SMF Attachement files"),
         {120, 585, 4095, 375},
         state_.chkCreateAttachments,
         chkCreateAttachments_Click},
        {QStringLiteral("chkCreateHiddenTopics"),
         QStringLiteral("Create &Hidden Topics"),
         QStringLiteral("Create SMF Topics from Discus Hidden Topics"),
         {120, 945, 4215, 375},
         state_.chkCreateHiddenTopics,
         chkCreateHiddenTopics_Click},
        {QStringLiteral("chkCreateRedirectionFiles"),
         QStringLiteral("Create Discus &Redirection Files"),
         QStringLiteral("Create Discus Redirection files that redirect to SMF Forum"),
         {120, 1305, 4215, 375},
         state_.chkCreateRedirectionFiles,
         chkCreateRedirectionFiles_Click},
        {QStringLiteral("chkFindDiscusSpecialCharacters"),
         QStringLiteral("&Find Discus Special Characters"),
         QStringLiteral("Search Discus HTML Files for Discus Special Character Sequences"),
         {120, 1680, 3735, 375},
         state_.chkFindDiscusSpecialCharacters,
         chkFindDiscusSpecialCharacters_Click},
    };
    auto* const frame = new QFrame(panel);
    frame->setObjectName(QStringLiteral("frame1"));
    // The style's own frame loses its upper edge at 125 and 150 per cent.
    frame->setFrameStyle(QFrame::Box | QFrame::Sunken);
    auto* const layout = new DesignLayout(frame, kSize, kSize);
    for (const Option& option : options) {
        auto* const box = new QCheckBox(option.caption, frame);
        box->setObjectName(option.name);
        box->setToolTip(option.toolTip);
        box->setFont(HeavyFont(kPoints));
        Bind(option.field, box);
        connect(box, &QCheckBox::clicked, this, [this, click = option.click] {
            handlers_.Run(QStringLiteral("saving an option"), [this, click] { click(state_); });
        });
        layout->Put(box, option.place);
    }
    return frame;
}

// A click on Apply does nothing.
void frmOptions::BuildButtons(DesignLayout* layout) {
    const auto add = [this, layout](const char* name, const char* caption, int left) {
        auto* const button = new QPushButton(QString::fromLatin1(caption), this);
        button->setObjectName(QString::fromLatin1(name));
        layout->Put(button, {left, 4455, 1095, 375});
        return button;
    };
    QPushButton* const cmdOK = add("cmdOK", "&OK", 2490);
    QPushButton* const cmdCancel = add("cmdCancel", "&Cancel", 3720);
    add("cmdApply", "Appl&y", 4920);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, [this] { accept(); });
    connect(cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
}

void frmOptions::ShowPanel(int selected) {
    for (std::size_t panel = 0; panel < picOptions_.size(); ++panel) {
        picOptions_[panel]->setVisible(static_cast<int>(panel) == selected);
    }
}

void frmOptions::SelectNextTab() {
    tbsOptions_->setCurrentIndex((tbsOptions_->currentIndex() + 1) % tbsOptions_->count());
}

void frmOptions::MoveToCentre() {
    const QSize screen = QGuiApplication::primaryScreen()->size();
    adjustSize();
    move((screen.width() - width()) / 2, (screen.height() - height()) / 2);
}

}  // namespace tessaly
