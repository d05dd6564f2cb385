#pragma once
// The registry browser: keys on the left, the values of the chosen one on the right, a search below.
#include <QCheckBox>
#include <QHash>
#include <QMenu>
#include <QMenuBar>
#include <QTreeView>
#include <array>

#include "shell/models/RegTreeModel.h"
#include "shell/models/RegValueModel.h"
#include "shell/widgets/Dialogs.h"
#include "shell/widgets/RegSearchArea.h"
#include "shell/widgets/cSplitter.h"

namespace brenvik {

class frmBVK_RegBrowse : public Dialog {
    Q_OBJECT
public:
    frmBVK_RegBrowse(UserPort& port, RegBrowseRequest& request, QWidget* parent);

    bool goTo(const std::string& key, const std::optional<std::string>& value = std::nullopt);   // false: it is not there any more

public slots:
    void m_cSplit_SplitComplete(int position);

protected:
    void reject() override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct Entry;
    void makeMenus(QMenuBar& bar);
    QAction* entry(QMenu& menu, const Entry& wanted);
    QLayout* makePathRow();
    void makePanes();
    void makeContextMenus();
    void selectKey();
    void showValues(const std::string& select = {});
    void enableEntries();
    std::string key() const;
    const BrowserValue* chosenValue() const;
    bool valuesInFront() const;

    void mnuAendern();
    void newValue(std::uint32_t type);
    void newKey();
    void renameKey();
    void renameValue();
    void mnuDelKey();
    void deleteValue();
    void copyPath();
    void refresh();
    void goToTyped();
    std::optional<std::string> askName(const char* title, const char* question, const std::string& name);

    UserPort& port_;
    RegBrowser& browser_;
    IconSet icons_;
    QHash<QString, QAction*> actions_;
    QLineEdit* txtPfad_;
    QWidget* panes_;
    RegTreeModel* keys_;
    RegValueModel* values_;
    QTreeView *tvwReg_, *lvwReg_;
    cSplitter* picSplitter_;
    RegSearchArea* fraSuche_;
    QLabel* sbrReg_;
    int split_ = 300;                // where the divider was put; a narrow window may have it elsewhere
};

}  // namespace brenvik
