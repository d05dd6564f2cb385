#pragma once
// The search of the registry browser: what to look for below a key, and the hits. While it runs only its own button is
// alive; everything else of the window is disabled.
#include <QCheckBox>
#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

#include "shell/models/RegValueModel.h"

namespace brenvik {

class RegSearchArea : public QFrame {
    Q_OBJECT
public:
    RegSearchArea(RegBrowser& browser, QWidget* parent);

    void open(const std::string& key);          // shows itself, to search below this key
    void setKey(const std::string& key);
    bool running() const { return running_; }
    void cancel() { cancelled_ = true; }

signals:
    void started();
    void finished();
    void chosen(const BrowserHit& hit);

private:
    QLayout* makeQuestion();
    QCheckBox* makeChoice(const char* name, const QString& caption);
    void search();
    void showProgress(const std::string& key);

    RegBrowser& browser_;
    std::string key_;
    QLineEdit* txtRegSuche_;
    QCheckBox *chkKey_, *chkValueNames_, *chkData_;
    QPushButton* cmdRegSuchen_;
    QTreeView* lvRegHits_;
    RegHitModel* hits_;
    QLabel* lblRegHits_;
    bool running_ = false, cancelled_ = false;
};

}  // namespace brenvik
