// The frame and what it passes on: the active sub-window, the wish to end, files dropped on it.
#include "shell/qt/q_frame.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QMdiArea>
#include <QMimeData>
#include <QStatusBar>
#include <QTimer>
#include <QUrl>

#include <cmath>

#include "platform/interrupt.h"
#include "shell/desk_events.h"
#include "shell/qt/q_guard.h"
#include "shell/qt/q_picture.h"
#include "shell/qt/q_text.h"
#include "shell/qt/q_windows.h"

namespace velora::qt {

namespace {

Frame *the_frame = nullptr;
constexpr int kTickEvery = 500; // milliseconds

// The database that a drag brings, or an empty name.
QString dragged_database(const QMimeData *data) {
  for (const QUrl &url : data->urls()) {
    const QString file = url.toLocalFile();
    const QString ending = QFileInfo(file).suffix().toLower();
    if (ending == QLatin1String("ddb") || ending == QLatin1String("seg"))
      return file;
  }
  return {};
}

} // namespace

Frame &frame() {
  return *the_frame;
}

void show_zoom(double factor) {
  if (the_frame != nullptr)
    the_frame->show_zoom(factor);
}

Frame::Frame() : area_(new QMdiArea), running_(new QLabel), zoom_(new QLabel) {
  the_frame = this;
  setObjectName(QStringLiteral("frame"));
  setWindowTitle(QLatin1String(kFrameTitle));
  setAccessibleName(QLatin1String(kFrameTitle));
  setAcceptDrops(true);
  resize(1000, 720);
  area_->setObjectName(QStringLiteral("windows"));
  area_->setAccessibleName(QStringLiteral("Windows"));
  area_->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
  area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
  area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  area_->setTabsClosable(true);
  area_->setTabsMovable(true);
  area_->setDocumentMode(true);
  setCentralWidget(area_);
  running_->setObjectName(QStringLiteral("running"));
  running_->setAccessibleName(QStringLiteral("What runs"));
  zoom_->setObjectName(QStringLiteral("zoom"));
  zoom_->setAccessibleName(QStringLiteral("Zoom"));
  statusBar()->addPermanentWidget(running_);
  statusBar()->addPermanentWidget(zoom_);
  // What is not saved is written beside the database now and then.
  auto *tick = new QTimer(this);
  connect(tick, &QTimer::timeout, this, [] {
    if (QWidget *dialog = QApplication::activeModalWidget(); dialog != nullptr && gEndAsked != 0)
      dialog->close(); // nobody answers it any more
    guarded(time_passed);
  });
  tick->start(kTickEvery);
  connect(area_, &QMdiArea::subWindowActivated, this,
          [this](QMdiSubWindow *sub) { guarded([&] { activated(sub); }); });
}

Frame::~Frame() {
  disconnect(area_, nullptr, this, nullptr);
  the_frame = nullptr;
}

void Frame::activated(QMdiSubWindow *sub) {
  const auto *own = dynamic_cast<const SubWindow *>(sub);
  const Window *window = own == nullptr ? nullptr : find_window(own->id());
  if (window == nullptr)
    return;
  if (window->view != nullptr)
    show_zoom(window->view->zoom());
  else
    zoom_->clear();
  window_activated(window->id);
}

void Frame::show_database(const QString &base, bool changed) {
  QString title = QLatin1String(kFrameTitle);
  if (!base.isEmpty() || changed)
    title += QStringLiteral(" - ") + (base.isEmpty() ? QStringLiteral("(no database)") : base) +
             (changed ? QStringLiteral("*") : QString());
  if (title != windowTitle())
    setWindowTitle(title);
  setWindowModified(false);
}

void Frame::show_running(bool on) {
  running_->setText(on ? QStringLiteral("Running: Esc stops it") : QString());
}

void Frame::show_hint(const QString &hint) {
  statusBar()->showMessage(hint);
}

void Frame::show_zoom(double factor) {
  zoom_->setText(QStringLiteral("%1 %").arg(std::lround(factor * 100)));
}

// The program asks first; dialogs may come of it when this event is over.
void Frame::closeEvent(QCloseEvent *event) {
  if (may_close_) {
    event->accept();
    return;
  }
  event->ignore();
  QTimer::singleShot(0, this, [] { guarded([] { close_asked(0); }); });
}

void Frame::dragEnterEvent(QDragEnterEvent *event) {
  guarded([&] {
    if (!command_runs() && !dragged_database(event->mimeData()).isEmpty())
      event->acceptProposedAction();
  });
}

void Frame::dropEvent(QDropEvent *event) {
  guarded([&] {
    const QString file = dragged_database(event->mimeData());
    if (file.isEmpty())
      return;
    event->acceptProposedAction();
    QTimer::singleShot(0, this, [file] { guarded([&] { open_database(narrow(file)); }); });
  });
}

} // namespace velora::qt
