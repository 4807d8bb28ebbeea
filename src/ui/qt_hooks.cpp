#include "ui/qt_hooks.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>

#include "ui/main_window.h"

namespace velmar {
namespace {
QString Q(std::string_view s) { return QString::fromUtf8(s.data(), static_cast<qsizetype>(s.size())); }

// The engine writes CR LF between lines; a box shows plain line feeds.
QString BoxText(std::string_view s) { return Q(s).replace("\r\n", "\n").replace('\r', '\n').replace('\t', "    "); }

QMessageBox::StandardButton ButtonOf(Answer a) {
  switch (a) {
    case Answer::Yes:
      return QMessageBox::Yes;
    case Answer::No:
      return QMessageBox::No;
    case Answer::Cancel:
      return QMessageBox::Cancel;
  }
  return QMessageBox::NoButton;
}
}  // namespace

QWidget* QtHooks::Parent() const { return window_; }

Answer QtHooks::Ask(std::string_view title, std::string_view text, bool withCancel, Answer defaultAnswer) {
  QMessageBox::StandardButtons buttons = QMessageBox::Yes | QMessageBox::No;
  if (withCancel) buttons |= QMessageBox::Cancel;
  const auto b = QMessageBox::question(Parent(), Q(title), BoxText(text), buttons, ButtonOf(defaultAnswer));
  if (b == QMessageBox::Yes) return Answer::Yes;
  if (b == QMessageBox::No) return Answer::No;
  return withCancel ? Answer::Cancel : Answer::No;
}

void QtHooks::ShowMessage(std::string_view title, std::string_view text, int /*helpContext*/) {
  // The help file is not shipped, so a box never offers its Help button.
  QMessageBox::warning(Parent(), Q(title), BoxText(text));
}

std::string QtHooks::AskFilePath(std::string_view title, std::string_view filter, bool forSaving) {
  const QString path = forSaving ? QFileDialog::getSaveFileName(Parent(), Q(title), QString(), Q(filter))
                                 : QFileDialog::getOpenFileName(Parent(), Q(title), QString(), Q(filter));
  return path.toStdString();
}

void QtHooks::BusyPointer(bool on) {
  if (on) {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    ++busy_;
  } else if (busy_ > 0) {
    QApplication::restoreOverrideCursor();
    --busy_;
  }
}

void QtHooks::Breathe() { QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); }

void QtHooks::EndCellEdit() {
  if (window_) window_->EndCellEdits();
}

void QtHooks::RefreshResults() {
  if (window_) window_->RefreshResults();
}

void QtHooks::SetCalculateButton(std::string_view image, std::optional<bool> button5Enabled) {
  if (window_) window_->SetCalculateButton(std::string(image), button5Enabled);
}

void QtHooks::EnableHullDragTableCommand(bool enabled) {
  if (window_) window_->SetCalculateButton({}, enabled);
}

void QtHooks::ShowModeView(int mode) {
  if (window_) window_->SetMode(mode == 1 ? Mode::Propulsion : Mode::Resistance);
}

void QtHooks::ShowPropellerSizing() {
  if (window_) window_->ShowPropellerSizing();
}

}  // namespace velmar
