#include "tipengine/TipTree.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "frame/program/Product.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "tipdb/Limits.h"
#include "tipdb/LoadDB.h"
#include "tipdb/RecordReader.h"
#include "tipdb/Schema.h"
#include "tipengine/Messages.h"

namespace brenvik {
namespace {

constexpr std::int32_t GeneralHelpTopic = 125;

struct Tabs {
    enum class View { Gruppen, Liste, Versions } view;
    int filter;
};

// Tabs 1 to 9 of tbsTree.
constexpr Tabs TabPage[] = {
    {Tabs::View::Gruppen, 0}, {Tabs::View::Liste, 0},   {Tabs::View::Gruppen, 1},
    {Tabs::View::Gruppen, 2}, {Tabs::View::Gruppen, 3}, {Tabs::View::Gruppen, 4},
    {Tabs::View::Gruppen, 5}, {Tabs::View::Versions, 0}, {Tabs::View::Gruppen, 6},
};

template <class T> T& at(std::vector<T>& table, std::int64_t index) {
    if (index < 0 || index >= static_cast<std::int64_t>(table.size())) throw NumberedError(errnum::Subscript, "Index außerhalb des gültigen Bereichs");
    return table[static_cast<std::size_t>(index)];
}

// A row may name as its parent a level whose node is gone and whose place another took: such a tree is deeper than its levels say.
void checkDepth(const std::vector<TreeNode>& tree, int parent) {
    std::size_t levels = 1;
    for (int node = parent; node > 0; node = tree[static_cast<std::size_t>(node)].parent)
        if (++levels > MaxTreeLevels) throw NumberedError(errnum::Overflow, "Überlauf");
}

}  // namespace

std::vector<int> displayOrder(const MainWindow& windows, int node) {
    const TreeNode& n = windows.tvBVKDB.at(static_cast<std::size_t>(node));
    std::vector<int> order = n.kinder;
    if (n.Sorted) {
        std::vector<std::pair<std::string, int>> keyed;
        keyed.reserve(order.size());
        for (int child : order) keyed.emplace_back(sortKey(windows.tvBVKDB[static_cast<std::size_t>(child)].text), child);
        std::stable_sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
        std::transform(keyed.begin(), keyed.end(), order.begin(), [](const auto& k) { return k.second; });
    }
    return order;
}

int TipTree::addNode(int parent, TreeNode node) {
    auto& tree = windows().tvBVKDB;
    node.parent = parent;
    const int index = static_cast<int>(tree.size());
    tree.push_back(std::move(node));
    if (parent >= 0) tree[static_cast<std::size_t>(parent)].kinder.push_back(index);
    return index;
}

void TipTree::indexTips() {
    tipsByIndex_.clear();
    tipsByIndex_.reserve(ctx_.udtTippListe.size());
    for (std::size_t k = 0; k < ctx_.udtTippListe.size(); ++k) tipsByIndex_[ctx_.udtTippListe[k].Index].push_back(k);
}

void TipTree::TreeEinlesen() {
    ctx_.trace.write("Treebaum aufbauen");
    ctx_.intTreeAktiv = static_cast<std::int16_t>(windows().tbsTree);
    const int tab = std::clamp<int>(ctx_.intTreeAktiv, 1, 9);
    const Tabs& tabs = TabPage[tab - 1];

    ctx_.port.letEventsRun();
    windows().tvBVKDB.clear();
    addNode(-1, {std::string(product::Titel), TreeNode::Art::Root, 0, -1, false, {}});
    indexTips();
    switch (tabs.view) {
        case Tabs::View::Gruppen: buildGroups(tabs.filter); break;
        case Tabs::View::Liste: buildFlatList(); break;
        case Tabs::View::Versions: buildVersions(); break;
    }
    windows().selectedNode = 0;
    observer_.treeChanged();
    ctx_.port.letEventsRun();
    statusBarGeneral();
    observer_.windowChanged();
    ctx_.trace.write("Treebaum fertig aufgebaut");
}

void TipTree::buildFlatList() {
    windows().tvBVKDB[0].Sorted = true;
    for (const auto& tipp : ctx_.udtTippListe) {
        addNode(0, {tipp.Überschrift, TreeNode::Art::Tipp, tipp.Symbol, -1, false, {}, tipp.Index});
        if (ctx_.trace.debug()) ctx_.trace.write(tipp.Überschrift + " - ADD Tip: ");
    }
}

void TipTree::buildVersions() {
    windows().tvBVKDB[0].Sorted = true;
    std::unordered_map<std::string, std::vector<std::size_t>> byVersion;
    for (std::size_t k = 0; k < ctx_.udtTippListe.size(); ++k) byVersion[ctx_.udtTippListe[k].NeuInVersion].push_back(k);
    for (const auto& version : ctx_.strDBVersionen) {
        const int node = addNode(0, {version, TreeNode::Art::Version, 1, -1, false, {}});
        const auto hits = byVersion.find(version);
        if (hits == byVersion.end()) continue;
        for (std::size_t k : hits->second) {
            const auto& tipp = ctx_.udtTippListe[k];
            addNode(node, {tipp.Überschrift, TreeNode::Art::Tipp, tipp.Symbol, -1, false, {}, tipp.Index});
            if (ctx_.trace.debug()) ctx_.trace.write(tipp.Überschrift + " - ADD Tip: ");
        }
    }
}

void TipTree::buildGroups(int filter) {
    auto& baum = ctx_.udtTreebaum;
    auto& tree = windows().tvBVKDB;
    std::vector<int> NodeAnEbene(ctx_.udtGruppen.size() + 1, 0);   // levels count from 1
    std::vector<bool> GruppeGefuellt(NodeAnEbene.size(), false);

    const auto place = [&](std::size_t i) {
        const Treebaum& row = baum[i];
        const Gruppe& gruppe = at(ctx_.udtGruppen, row.Gruppe);
        if (ctx_.trace.debug()) ctx_.trace.write(gruppe.Name + " - Add Gruppe: ");
        const int parent = at(NodeAnEbene, row.Vorgänger - 1);
        at(tree, parent);
        at(NodeAnEbene, row.Ebene);   // a level that has no place must not leave a half-made node behind
        checkDepth(tree, parent);
        const int node = addNode(parent, {gruppe.Name, TreeNode::Art::Gruppe, 1, -1, false, {}});
        NodeAnEbene[static_cast<std::size_t>(row.Ebene)] = node;
        if (ctx_.trace.debug()) ctx_.trace.write(std::to_string(node + 1) + " - GruppenIndex: ");
        const bool filled = TreeTippDBRead(node, row.Gruppe, filter);
        GruppeGefuellt[static_cast<std::size_t>(row.Ebene)] = filled;
        tree[static_cast<std::size_t>(node)].Sorted = true;
        if (!filled && i + 1 < baum.size() && baum[i + 1].Ebene <= row.Ebene) {
            if (ctx_.trace.debug()) ctx_.trace.write(std::to_string(node + 1) + " - DEL Gruppe: ");
            tree[static_cast<std::size_t>(parent)].kinder.pop_back();   // the node was placed last and has no child
            tree.pop_back();
        }
    };
    // The rows that have no place in the tree are told at the end of the step, all in one report.
    std::vector<std::int32_t> misplaced;
    std::int32_t firstError = 0;
    for (std::size_t i = 0; i < baum.size(); ++i) {
        try {
            place(i);
        } catch (const std::exception& error) {
            if (misplaced.empty()) firstError = errorNumberOf(error);
            misplaced.push_back(baum[i].Nummer);
        }
    }
    if (misplaced.empty()) return;
    std::string procedure = "TreeEinlesen";
    FehlerMeldung(ctx_, procedure, numberText(firstError), fmt::format(messages::TreeRows, TableTreebaum, misplaced.size(), baum.size(), misplaced.front()));
}

bool TipTree::TreeTippDBRead(int nodeIndex, int gruppe, int filter) {
    const Gruppe& g = at(ctx_.udtGruppen, gruppe);
    if (g.TippAnzahl == -1) return false;
    bool added = false;
    for (std::int32_t number : g.Tipps) {
        const auto hits = tipsByIndex_.find(number);
        if (hits == tipsByIndex_.end()) continue;
        for (std::size_t k : hits->second) {
            const auto& tipp = ctx_.udtTippListe[k];
            if (!tipp.Filter[static_cast<std::size_t>(filter)]) continue;
            addNode(nodeIndex, {tipp.Überschrift, TreeNode::Art::Tipp, tipp.Symbol, -1, false, {}, tipp.Index});
            if (ctx_.trace.debug()) ctx_.trace.write(tipp.Überschrift + " - ADD Tipp: ");
            added = true;
        }
    }
    return added;
}

// Panel 2 counts one Tip too few, and keeps doing so. A database that is not the program's own is named there.
void TipTree::statusBarGeneral() {
    windows().sbrBVK[1] = "Einträge: " + std::to_string(static_cast<std::int64_t>(ctx_.udtTippListe.size()) - 1);
    std::error_code error;
    if (!std::filesystem::equivalent(ctx_.databaseFile, ctx_.programPath / DatabaseName, error)) windows().sbrBVK[1] += messages::OtherDatabase + utf8FromPath(ctx_.databaseFile.filename());
    windows().sbrBVK[2] = "Datenbankversion: " + ctx_.strDBVersion + " [" + ctx_.strDBDatum + "] | Programmversion: " + ctx_.strProgVersion +
                          " [" + std::string(product::ProgramDate) + "] ";
}

void TipTree::selectTab(int tab) {
    if (ctx_.blnTabInit || tab == ctx_.intTreeAktiv || tab < 1 || tab > 9) return;
    windows().tbsTree = tab;
    ctx_.port.waitPointer(true);
    ctx_.click();
    TreeEinlesen();
    ctx_.port.waitPointer(false);
}

void TipTree::selectNode(int node) {
    if (node < 0 || node >= static_cast<int>(windows().tvBVKDB.size())) return;
    const int before = std::exchange(windows().selectedNode, node);
    if (!TreeViewAbfrage(false)) selectAgain(before);
}

// The user stays where he was: what he wanted to save could not be.
void TipTree::selectAgain(int node) {
    windows().selectedNode = node;
    observer_.selectionChanged();
}

bool TipTree::showTipByHeading(const std::string& heading) {
    const auto& tree = windows().tvBVKDB;
    for (std::size_t k = 0; k < tree.size(); ++k) {
        if (tree[k].art != TreeNode::Art::Tipp || tree[k].text != heading) continue;
        return showNode(static_cast<int>(k));
    }
    return false;
}

bool TipTree::showNode(int node) {
    const int before = std::exchange(windows().selectedNode, node);
    observer_.selectionChanged();
    const bool left = TreeViewAbfrage(false);
    if (!left) selectAgain(before);
    return left;
}

// By the number alone, whichever Tips share its heading; a Tip in no group stands in the flat list only.
bool TipTree::showTipByNumber(std::int32_t number) {
    if (tipsByIndex_.count(number) == 0) return false;
    const auto& tree = windows().tvBVKDB;
    for (const int tab : {1, 2}) {
        if (windows().tbsTree != tab) selectTab(tab);
        const auto node = std::find_if(tree.begin(), tree.end(), [&](const TreeNode& n) { return n.art == TreeNode::Art::Tipp && n.nummer == number; });
        if (node == tree.end()) continue;
        const struct Meant {
            explicit Meant(std::optional<std::int32_t>& place, std::int32_t value) : number(place) { number = value; }
            ~Meant() { number.reset(); }
            std::optional<std::int32_t>& number;
        } meant(meantNumber_, number);
        return showNode(static_cast<int>(node - tree.begin()));
    }
    return false;
}

bool TipTree::TippOeffnen(const std::string& heading) {
    if (!settler_.DatenSichern()) return false;
    const auto lastNodeOf = [&] {
        const auto& tree = windows().tvBVKDB;
        const auto place = std::find_if(tree.rbegin(), tree.rend(), [&](const TreeNode& node) { return node.text == heading; });
        return static_cast<int>(std::distance(place, tree.rend())) - 1;
    };
    int node = lastNodeOf();
    for (const int tab : {1, 2}) {   // a Tip in no group stands in the flat list only
        if (node >= 0) break;
        selectTab(tab);
        node = lastNodeOf();
    }
    return node >= 0 && showNode(node) && ctx_.blnTippGeladen;
}

// Opens the table afresh and reads the first row from its start whose column holds the text exactly.
bool TipTree::readTipAt(int ordinal, const std::string& text) {
    ctx_.objRS = ctx_.objDB.GetNewRS(ctx_, ctx_.objVerbindung.get(), "Select * From RegDaten");
    ctx_.trace.write("Tipp wurde im Tree ausgewählt ?");
    if (!ctx_.objRS || ctx_.objRS->State() != RecordSet::IsOpen) return false;
    if (ordinal == spalte::Index)
        ctx_.objRS->moveToNumber(ordinal, static_cast<std::int64_t>(Val(text)));
    else
        ctx_.objRS->moveToText(ordinal, text);
    if (ctx_.objRS->atEOF()) return false;
    DBTippRead(ctx_);
    ctx_.blnDateiSuchen = true;
    return true;
}

bool TipTree::readTipNumber(std::int32_t number) {
    bool found = false;
    reportAndGoOn(ctx_, "TreeViewAuswahl", [&] { found = readTipAt(spalte::Index, std::to_string(number)); });
    return found;
}

bool TipTree::TreeViewAuswahl() {
    bool tipFound = false;
    const std::string text = windows().tvBVKDB.empty() ? std::string() : windows().tvBVKDB.at(static_cast<std::size_t>(windows().selectedNode)).text;
    reportAndGoOn(ctx_, "TreeViewAuswahl", [&] {
        tipFound = meantNumber_ ? readTipAt(spalte::Index, std::to_string(*meantNumber_)) : readTipAt(spalte::Überschrift, text);
    });
    if (!tipFound) showGroupOrNothing(text);
    return tipFound;
}

void TipTree::showGroupOrNothing(const std::string& nodeText) {
    MainWindow& f = windows();
    const auto group = std::find_if(ctx_.udtGruppen.begin(), ctx_.udtGruppen.end(), [&](const Gruppe& g) { return g.Name == nodeText; });
    f.txtInfoSichtbar = group != ctx_.udtGruppen.end();
    if (!f.txtInfoSichtbar) return;
    f.txtInfoFarbe = f.fraInfoFarbe = TextColour::ButtonText;
    f.fraInfo = "Information";
    f.txtInfo = group->Beschreibung;
}

bool TipTree::TreeViewAbfrage(bool neuladen) {
    MainWindow& f = windows();
    f.sbrBVK[0] = "PC: " + ctx_.strRechnername;
    if (ctx_.blnGeaendert && !settler_.DatenSichern(Whereabouts::IsReplaced)) return false;
    if (ctx_.intPanelCheckBox != 0 || ctx_.intPanelAuswahl != 0 || ctx_.intPanelText != 0 || ctx_.intPanelOption != 0 || ctx_.intPanelZahl >= 1)
        screen_.TippsEntladen();
    if (TreeViewAuswahl() || neuladen) {
        ctx_.blnTippAnzeige = true;
        f.fraBVKLogo = false;
        f.fraEinstellungen = f.fraSteuerung = f.txtInfoSichtbar = true;
        if (lastEntry() >= 1) f.sbrBVK[2] = "Index: " + std::to_string(eintrag(1).TippIndex);
        f.lblDBTippU = ctx_.aktuellerTipp.Überschrift;
        screen_.DBTippsAusgeben();
        return true;
    }
    ctx_.blnTippAnzeige = false;
    f.panels.clear();
    ctx_.values.clear();
    ctx_.blnGeaendert = false;
    f.fraBVKLogo = true;
    f.fraEinstellungen = f.fraSteuerung = false;
    f.lblDBTippU.clear();
    ctx_.aktuellerTipp.HilfeNummer = GeneralHelpTopic;
    windows().FB_KeySave(false);
    windows().FB_KeyDel(false);
    windows().FB_Default(false);
    windows().FB_RegFile(false);
    windows().FB_ADMFile(false);
    windows().FB_KeyInfo(false);
    f.mnuBSFreigabe = false;
    ctx_.blnTippGeladen = false;
    statusBarGeneral();
    observer_.panelsChanged();
    observer_.windowChanged();
    return true;
}

void TipTree::showOtherDatabase(const std::filesystem::path& file) {
    if (!loadOtherDatabase(ctx_, file)) return;
    screen_.TippsEntladen();
    ctx_.aktuellerTipp = {};
    ctx_.values.clear();
    ctx_.blnTippGeladen = false;
    TreeEinlesen();
    TreeViewAbfrage(false);
}

void TipTree::mnuandereDBLoad() {
    if (!settler_.DatenSichern()) return;
    if (const auto choice = ctx_.port.chooseFile({{}, messages::DatabaseFilter, messages::DatabaseTitle, false})) showOtherDatabase(userPath(ctx_, *choice));
}

void TipTree::mnuBVKDBLoad() {
    if (settler_.DatenSichern()) showOtherDatabase(ctx_.programPath / DatabaseName);
}

}  // namespace brenvik
