#pragma once
// Reading what the registry or the file holds into the working values, with the status texts and command states that go
// with it. A value of another type than the Tip's is put to the user once.
#include "tipengine/tip/TipFiles.h"
#include "tipengine/tip/TipPart.h"

namespace brenvik {

class ValueReader : private TipPart {
public:
    ValueReader(CurrentTip& tip, TipFiles& files, ChangeRecorder& recorder) : TipPart(tip), files_(files), recorder_(recorder) {}

    void begin() { deleteBlocked_ = 0; }                  // of another Tip
    void readEntry(std::int16_t i, StatusLine& status);
    void readSilently(Panel& panel);                     // all of its entries; one status line speaks for them
    bool readOnlyNow(std::int16_t i) const;
    std::string deleteBlocker() const;                   // while KeyDel is off: the entry that decided it, with its status

private:
    void ReadRecTipp(std::int16_t i, StatusLine* label);
    bool readRecTipOnce(std::int16_t i, StatusLine* label, bool mayRepeat);
    void RegWertNotFound(std::int16_t i, StatusLine* label);
    void statusOfFound(bool writable, StatusLine& label);
    void allowDelete(std::int16_t i, bool on);
    void ReadINITipp(std::int16_t i, StatusLine* label, bool& found);
    void readIniSilently(Panel& panel);
    bool DatenTypOK(std::int32_t regType, std::int16_t i);
    bool adaptType(std::int16_t i);
    bool WertDel(std::int16_t index);
    bool CheckDatenWert(std::int16_t i);

    TipFiles& files_;
    ChangeRecorder& recorder_;
    bool blnDatenTypAnpassen_ = false, blnDatenTypAbbruch_ = false;   // what became of the last value of another type
    std::int16_t deleteBlocked_ = 0;                      // entry whose reading switched KeyDel off; 0: none
};

}  // namespace brenvik
