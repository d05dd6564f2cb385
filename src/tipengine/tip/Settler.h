#pragma once
// Asking what becomes of the user's input before something else takes its place.

namespace brenvik {

// What becomes of the Tip on screen after it was asked about.
enum class Whereabouts { StaysAsItIs, IsReplaced };

class Settler {
public:
    virtual ~Settler() = default;
    // Every way out of the Tip on screen begins here. False: the user wanted to save, and it was refused or failed; then the
    // input stays a change, and the way must not be taken. What the user drops is gone at once: the Tip is read again, unless
    // the way puts something else in its place whatever happens.
    [[nodiscard]] virtual bool DatenSichern(Whereabouts whereabouts = Whereabouts::StaysAsItIs) = 0;
};

}  // namespace brenvik
