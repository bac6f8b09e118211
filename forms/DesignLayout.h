#pragma once

#include <QLayout>
#include <vector>

namespace tessaly {

// Where a widget stands on its form, in twips: fifteen make a pixel at 96 dpi.
struct Place {
    int left = 0;
    int top = 0;
    int width = 0;
    int height = 0;
};

// How much of the width and height that a form has gained goes to each edge of a widget: 0 none, 1 all.
struct Gain {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

// Puts widgets at the places of a form's design. When the form is resized, edges move by their gain. When the
// texts do not fit, as with a larger system font, the whole design is enlarged until they do.
class DesignLayout : public QLayout {
  public:
    // The design's size and the least that it can be squeezed to, in twips.
    DesignLayout(QWidget* form, QSize design, QSize least);
    ~DesignLayout() override;

    void Put(QWidget* widget, Place place, Gain gain = {});

    void addItem(QLayoutItem* item) override;
    int count() const override;
    QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;
    void setGeometry(const QRect& form) override;
    void invalidate() override;

  private:
    struct Entry {
        QLayoutItem* item;
        Place place;
        Gain gain;
    };

    double Scale() const;
    bool Fits(double scale) const;

    QSize design_;
    QSize least_;
    std::vector<Entry> entries_;
    mutable double scale_ = 0;  // 0 until it is measured
};

}  // namespace tessaly
