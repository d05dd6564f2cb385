#pragma once
// The start window: product, version, progress of the load sequence.
#include <QLabel>
#include <QProgressBar>
#include <QWidget>

#include "frame/Context.h"

class QEventLoop;

namespace brenvik {

class frmBVK_Info : public QWidget {
public:
    static constexpr int PauseMs = 5000;

    // withPause: at 100 percent the window stays for PauseMs, or until a click or a key, if ShowInfo is on.
    explicit frmBVK_Info(FrameContext& ctx, bool withPause = true);

    void Update(int percent);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    QWidget* makeInfoFrame();
    QLabel* label(const char* name, const QString& text);
    void pause();
    void endPause();

    FrameContext& ctx_;
    bool withPause_;
    QLabel* lblStartInfo_;
    QProgressBar* ProgressBar1_;
    QEventLoop* waiting_ = nullptr;
};

}  // namespace brenvik
