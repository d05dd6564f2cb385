#pragma once
// A panel kind: all that is special about one of the eleven values of Ausgabeart. What is told by a single word stands in
// Traits; nobody outside this folder asks for the number itself.
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "tipengine/kinds/KindHost.h"
#include "tipengine/kinds/SourceCheck.h"

namespace brenvik {

enum class TemplatePart { None, States, Text, Number };   // what stands for a value in a policy template (ADM, ADMX)

struct Traits {
    std::int16_t number = 0;           // the value of Ausgabeart
    const char* sourceName = "";       // in the sources of the Tips
    const char* traceName = "";
    std::int16_t Context::* counter = nullptr;   // of the control array; none: one panel serves all of the Tip's entries of the kind
    TemplatePart part = TemplatePart::None;
    const char* fieldLabel = "";       // of a text field in a template
    bool typed = false;                // the user's text is made of the one that was shown, and is not chosen from a list
    bool captionList = false;          // Anzeigetext is a list of captions, one for each choice
    bool offers = false;               // auswahl is what an entry can be set to
    bool forSeveral = false;           // the status line speaks for several values
    bool ticks = false;                // rows with boxes; without a value name they are keys
    bool ticksHide = false;            // a ticked row hides what it names
    bool listsFiles = false;           // its entries can be made of the files of a folder
    bool section = false;              // it stands for a whole section of a file, which it writes itself, and asks when collected
    bool menu = false;                 // its rows are keys with a command each

    bool onePanel() const { return number != 0 && counter == nullptr; }
    bool rowsAreKeys(const std::string& Wertname) const { return menu || (ticks && Wertname.empty()); }
    bool holdsValue(const std::string& Wertname) const { return !section && !rowsAreKeys(Wertname); }
};

// A value as it was read: in upper case and in display form, and the entry's two values in lower case.
struct ReadValue {
    std::int32_t type = 0;
    const std::string &lower, &upper, &compared, &shown;
};

// What the user does in a panel. A kind answers to what its controls can send; the place in the panel was checked.
class PanelEvents {
public:
    virtual ~PanelEvents() = default;
    virtual void check(KindHost&, Panel&, bool /*on*/) const {}
    virtual void typeText(KindHost&, Panel&, const std::string&) const {}
    virtual void setNumber(KindHost&, Panel&, std::int32_t) const {}
    virtual void typeNumber(KindHost&, Panel&, const std::string&) const {}
    virtual void choose(KindHost&, Panel&, int /*item*/) const {}
    virtual void browse(KindHost&, Panel&) const {}
    virtual void pickColour(KindHost&, Panel&) const {}
    virtual void tick(KindHost&, Panel&, std::size_t /*row*/, bool /*on*/) const {}
    virtual void selectRow(Panel&, int /*row*/) const {}
    virtual void flip(KindHost&, Panel&, std::size_t /*box*/, bool /*on*/) const {}
    virtual void typeSwitch(KindHost&, Panel&, std::size_t /*box*/, const std::string&) const {}
    virtual void typeTitle(KindHost&, Panel&, const std::string&) const {}
};

class Kind : public PanelEvents, public Traits {
public:
    explicit Kind(const Traits& traits) : Traits(traits) {}
    Kind(const Kind&) = delete;
    Kind& operator=(const Kind&) = delete;

    // The panel, from what stands in the registry or the file now. i is the entry, or the first one of a kind with one panel.
    virtual void build(KindHost& host, std::int16_t i) const;
    virtual void unload(Context&) const {}
    // Whether the controls may change what the panel shows now, and the line that goes with it.
    void showLocks(const CurrentTip& tip, Panel& panel) const;

    // The registry's text as the kind shows it; throws NumberedError for what has no such form.
    std::string displayForm(FrameContext& ctx, std::int32_t type, std::string text) const;
    virtual bool shownDifferently(std::int32_t /*type*/) const { return false; }
    virtual std::string dwordForm(std::int32_t number) const;
    // Whether a value that was read is one of the Tip's.
    virtual bool isKnown(const ReadValue&) const { return true; }

    // Collecting. False: the panel holds what cannot be, and the user was told, or he gave up.
    virtual bool mayCollect(KindHost&, const Panel&, std::optional<BootInput>&) const { return true; }
    // What the panel says for an entry; none where an event set the text already, and where there is no value.
    virtual std::optional<std::string> valueText(const CurrentTip&, const Panel&, std::int16_t /*entry*/) const { return std::nullopt; }
    // That text in the words of the registry; throws NumberedError with the refusal.
    virtual std::string registryText(const TipEntry& e, std::string text) const;

    // A file whose section the kind writes itself. False: there is none, or it is refused, which planFile tells in refusal.
    virtual bool planFile(KindHost&, std::int16_t /*entry*/, Change&, std::string& /*refusal*/) const { return false; }
    virtual bool saveFile(KindHost&, ChangeRecorder&, std::int16_t /*entry*/) const { return true; }

    // The command line: what the panel of an entry shows, and setting it from such a text. Empty: set, else why not.
    virtual std::string shownText(const CurrentTip& tip, const Panel& panel, std::int16_t entry) const;
    virtual std::string setText(KindHost& host, Panel& panel, std::int16_t entry, const std::string& text) const;

    // The author's checks.
    virtual void checkSource(const SourceCheck& check) const;

protected:
    Panel& addPanel(KindHost& host, std::int16_t entry) const;
    static int rowOf(const Panel& panel, std::int16_t entry);

private:
    virtual std::string ownForm(FrameContext&, std::int32_t /*type*/, std::string text) const { return text; }
    virtual void lock(const CurrentTip& tip, Panel& panel) const;
};

// The kind of an Ausgabeart. A number that there is none for has a kind that builds nothing.
const Kind& kindOf(std::int64_t Ausgabeart);
inline const Kind& kindOf(const Panel& panel) { return kindOf(panel.Ausgabeart); }
inline const Kind& kindOf(const TipEntry& entry) { return kindOf(entry.Ausgabeart); }
// All of them, by their numbers.
std::span<const Kind* const> allKinds();

}  // namespace brenvik
