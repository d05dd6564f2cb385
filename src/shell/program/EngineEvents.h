#pragma once
// Hands the events of the main window on to the tip engine.
#include "shell/main/WindowEvents.h"
#include "tipengine/TipEngine.h"

namespace brenvik {

class EngineEvents : public WindowEvents {
public:
    explicit EngineEvents(TipEngine& engine) : engine_(engine) {}

    void click() override { engine_.context().click(); }
    bool beforeClose() override;
    bool beforeLeaving() override;
    void selectTab(int tab) override { engine_.tree().selectTab(tab); }
    void selectNode(int node) override { engine_.tree().selectNode(node); }
    void clickRegSave(const std::string& ownCaption) override { engine_.clickRegSave(ownCaption); }
    void clickDefault(const std::string& ownCaption) override { engine_.clickDefault(ownCaption); }
    void clickRegDel() override { engine_.clickRegDel(); }
    void userCheck(std::size_t panel, bool on) override { engine_.input().userCheck(panel, on); }
    void userText(std::size_t panel, const std::string& text) override { engine_.input().userText(panel, text); }
    void userNumber(std::size_t panel, std::int32_t value) override { engine_.input().userNumber(panel, value); }
    void userNumberText(std::size_t panel, const std::string& text) override { engine_.input().userNumberText(panel, text); }
    void userChoose(std::size_t panel, int item) override { engine_.input().userChoose(panel, item); }
    void userBrowse(std::size_t panel) override { engine_.input().userBrowse(panel); }
    void userColour(std::size_t panel) override { engine_.input().userColour(panel); }
    void userTick(std::size_t panel, int row, bool on) override { engine_.input().userTick(panel, row, on); }
    void userSelectRow(std::size_t panel, int row) override { engine_.input().userSelectRow(panel, row); }
    void userSwitch(std::size_t panel, int box, bool on) override { engine_.input().userSwitch(panel, box, on); }
    void userSwitchText(std::size_t panel, int box, const std::string& text) override { engine_.input().userSwitchText(panel, box, text); }
    void userBootTitle(std::size_t panel, const std::string& text) override { engine_.input().userBootTitle(panel, text); }

private:
    TipEngine& engine_;
};

}  // namespace brenvik
