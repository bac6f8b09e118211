#pragma once

#include <QMainWindow>
#include <deque>
#include <memory>
#include <unordered_map>

#include "control/modDefinitions.h"
#include "forms/DesignLayout.h"
#include "forms/Handlers.h"
#include "forms/StatusLine.h"

class QLineEdit;
class QPushButton;

namespace tessaly {

class frmOptions;
class ProgressArea;

// The main form. It shows the fields of the conversion and runs what their events do; it hooks itself into
// the state, which must live longer.
class frmConvert : public QMainWindow {
  public:
    explicit frmConvert(ConversionState& state);
    ~frmConvert() override;

    // Fills the fields from the settings. False when that failed: the failure was shown.
    bool Load();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    using EventHandler = void (*)(ConversionState&);

    void BuildMenu();
    void BuildFolders(QWidget* form, DesignLayout* layout);
    void BuildCounts(QWidget* form, DesignLayout* layout);
    void BuildFrame(QWidget* form, DesignLayout* layout);
    void BuildButtons(QWidget* form, DesignLayout* layout);
    void OrderTabs(QWidget* form);
    void HookIn();
    void TakeFirstSize(QWidget* form);

    QLineEdit* AddText(QWidget* form, const char* name, TextField& field);
    void AddCheck(QWidget* frame, DesignLayout* layout, const char* name, const char* caption,
                  CheckField& field, Place place, EventHandler click);
    QPushButton* AddButton(QWidget* form, const char* name, const char* caption, const QString& doing,
                           std::function<void()> handler);
    void BindButton(ButtonField& field, QPushButton* button);

    void CheckWhenLeft(QLineEdit* box, EventHandler lostFocus);
    bool CheckLeftFields();
    void Click(QWidget* clicked, const QString& doing, const std::function<void()>& handler);
    void Convert();
    void Check();
    void Exit();
    void ShowOptions();
    void OpenManual() const;
    std::u16string PickFolder(std::u16string_view start);
    void GiveFocusBack(TextField& field);

    ConversionState& state_;
    Handlers handlers_;
    frmOptions* options_;
    ProgressArea* txtArea_;
    std::unique_ptr<StatusLine> status_;
    std::unordered_map<const TextField*, QWidget*> boxes_;

    // Fields that were left and are still to be checked.
    std::unordered_map<QObject*, EventHandler> checks_;
    std::deque<QObject*> left_;
    bool isChecking_ = false;
    bool isGivingFocusBack_ = false;
    bool isClosed_ = false;
    bool isConverting_ = false;
    int boxesShown_ = 0;
};

}  // namespace tessaly
