#pragma once

#include <QDialog>
#include <vector>

#include "control/modDefinitions.h"

class QTabWidget;

namespace tessaly {

class DesignLayout;
class Handlers;

// The dialog of the four options. A box takes effect at its click; OK and Cancel alike only hide the form.
class frmOptions : public QDialog {
  public:
    frmOptions(ConversionState& state, Handlers& handlers, QWidget* owner);

  private:
    QWidget* BuildPanel();
    QWidget* BuildFrame(QWidget* panel);
    void BuildButtons(DesignLayout* layout);
    void ShowPanel(int selected);
    void SelectNextTab();
    void MoveToCentre();

    ConversionState& state_;
    Handlers& handlers_;
    QTabWidget* tbsOptions_;
    std::vector<QWidget*> picOptions_;
};

}  // namespace tessaly
