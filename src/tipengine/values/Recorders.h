#pragma once
// Hands every change on to all who keep one, in the order they were added. The engine is made before they are.
#include <vector>

#include "tipengine/values/Change.h"

namespace brenvik {

class Recorders final : public ChangeRecorder {
public:
    void add(ChangeRecorder& recorder) { recorders_.push_back(&recorder); }   // must outlive this
    void begin(const Change& change) override {
        for (ChangeRecorder* recorder : recorders_) recorder->begin(change);
    }
    void written(const Change& change, std::size_t value) override {
        for (ChangeRecorder* recorder : recorders_) recorder->written(change, value);
    }
    void finished(const Change& change) override {
        for (ChangeRecorder* recorder : recorders_) recorder->finished(change);
    }
    bool offerTakeBack(const Change& change) override {
        for (ChangeRecorder* recorder : recorders_)
            if (recorder->offerTakeBack(change)) return true;
        return false;
    }

private:
    std::vector<ChangeRecorder*> recorders_;
};

}  // namespace brenvik
