#include "forms/DesignLayout.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QWidget>

namespace tessaly {

namespace {

constexpr double kTwipsPerPixel = 15;

int Pixels(double twips, double scale) {
    return qRound(twips * scale / kTwipsPerPixel);
}

QSize Pixels(QSize twips, double scale) {
    return {Pixels(twips.width(), scale), Pixels(twips.height(), scale)};
}

QSize LabelNeeds(const QLabel& label, int width) {
    const int flags = Qt::TextShowMnemonic | (label.wordWrap() ? Qt::TextWordWrap : Qt::TextSingleLine);
    return label.fontMetrics().boundingRect(QRect(0, 0, width, 0), flags, label.text()).size();
}

QSize CheckBoxNeeds(const QCheckBox& box) {
    const QSize text = box.fontMetrics().size(Qt::TextShowMnemonic, box.text());
    const int beside = box.style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &box) +
                       box.style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, &box);
    return {text.width() + beside, text.height()};
}

QSize ButtonNeeds(const QPushButton& button) {
    constexpr QSize kRim(8, 4);
    return button.fontMetrics().size(Qt::TextShowMnemonic, button.text()) + kRim;
}

// The room that the widget's text needs within a width, 0 where any room will do.
QSize Needs(const QWidget& widget, int width) {
    constexpr int kRim = 4;
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return LabelNeeds(*label, width);
    if (const auto* box = qobject_cast<const QCheckBox*>(&widget)) return CheckBoxNeeds(*box);
    if (const auto* button = qobject_cast<const QPushButton*>(&widget)) return ButtonNeeds(*button);
    if (qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget)) {
        return {0, widget.fontMetrics().height() + kRim};
    }
    if (widget.layout() != nullptr) return widget.layout()->minimumSize();
    return {0, 0};
}

}  // namespace

DesignLayout::DesignLayout(QWidget* form, QSize design, QSize least)
    : QLayout(form), design_(design), least_(least) {
    setContentsMargins(0, 0, 0, 0);
}

DesignLayout::~DesignLayout() {
    for (const Entry& entry : entries_) delete entry.item;
}

void DesignLayout::Put(QWidget* widget, Place place, Gain gain) {
    addChildWidget(widget);
    entries_.push_back({new QWidgetItem(widget), place, gain});
    invalidate();
}

void DesignLayout::addItem(QLayoutItem* item) {
    entries_.push_back({item, {}, {}});
}

int DesignLayout::count() const {
    return static_cast<int>(entries_.size());
}

QLayoutItem* DesignLayout::itemAt(int index) const {
    if (index < 0 || index >= count()) return nullptr;
    return entries_[static_cast<std::size_t>(index)].item;
}

QLayoutItem* DesignLayout::takeAt(int index) {
    QLayoutItem* const item = itemAt(index);
    if (item != nullptr) entries_.erase(entries_.begin() + index);
    return item;
}

QSize DesignLayout::sizeHint() const {
    return Pixels(design_, Scale());
}

QSize DesignLayout::minimumSize() const {
    return Pixels(least_, Scale());
}

void DesignLayout::setGeometry(const QRect& form) {
    QLayout::setGeometry(form);
    const double scale = Scale();
    // Places count from the form's corner, also where a frame is drawn around it.
    const QSize gained = parentWidget()->size() - Pixels(design_, scale);
    for (const Entry& entry : entries_) {
        const Place& place = entry.place;
        const int left = Pixels(place.left, scale) + qRound(gained.width() * entry.gain.left);
        const int top = Pixels(place.top, scale) + qRound(gained.height() * entry.gain.top);
        const int right = Pixels(place.left + place.width, scale) + qRound(gained.width() * entry.gain.right);
        const int bottom =
            Pixels(place.top + place.height, scale) + qRound(gained.height() * entry.gain.bottom);
        // The widget itself, not its item: an item would centre what is larger than its size hint.
        entry.item->widget()->setGeometry(left, top, right - left, bottom - top);
    }
}

void DesignLayout::invalidate() {
    scale_ = 0;
    QLayout::invalidate();
}

double DesignLayout::Scale() const {
    constexpr double kStep = 0.05;
    constexpr double kLargest = 5;
    if (scale_ > 0) return scale_;
    scale_ = 1;
    while (scale_ < kLargest && !Fits(scale_)) scale_ += kStep;
    return scale_;
}

bool DesignLayout::Fits(double scale) const {
    for (const Entry& entry : entries_) {
        const QSize room(Pixels(entry.place.width, scale), Pixels(entry.place.height, scale));
        const QSize needed = Needs(*entry.item->widget(), room.width());
        if (needed.width() > room.width() || needed.height() > room.height()) return false;
    }
    return true;
}

}  // namespace tessaly
