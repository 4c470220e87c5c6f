// Remembers what records were before they changed, step by step, so that steps can be taken back.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "host/dxf/record.h"

namespace qrs::dxf {

// What is known of a drawing at the beginning of a step.
struct DrawingMarks {
    std::uint64_t seed = 0;
    std::uint64_t greatestHandle = 0;
    std::string unwritable;
    bool isModified = false;
    std::uint64_t saves = 0;  // how often it had been saved
};

class Journal {
  public:
    struct Entry {
        RecordId id;
        Record before;
    };
    struct Step {
        std::wstring name;
        DrawingMarks marks;
        std::deque<Entry> changed;
        RecordId recordCount = 0;  // records from here on are new
        std::uint64_t number = 0;  // from 1; none is given twice
        bool isKept = false;       // it counts although nothing has changed
    };

    // Begins a step; one in which nothing has changed is begun anew.
    void begin(std::wstring name, DrawingMarks marks, RecordId recordCount);
    // Tells it that a record is about to change. True when the step has not met it before: its bytes are then needed as
    // they are. False as long as no step was begun.
    bool note(RecordId id, const Record& before);
    // A record that is new in this step.
    void noteNew(RecordId id);
    // The step at work counts from now on; its number, 0 when no step was begun.
    std::uint64_t keep();
    // The last step in which something has changed or that is kept; null when there is none.
    const Step* last() const;
    void dropLast();

  private:
    // Many small steps over a large drawing shall not add up: after that many records the oldest steps are forgotten.
    static constexpr std::size_t kMostRemembered = 2'000'000;

    static bool isEmpty(const Step& step, bool hasNew) { return step.changed.empty() && !hasNew && !step.isKept; }
    bool meets(RecordId id);
    void forgetOldest();

    std::deque<Step> steps_;
    std::uint64_t begun_ = 0;     // how many
    bool hasNew_ = false;         // the step at work has made records
    std::vector<bool> met_;       // by the step at work, by record
    std::size_t remembered_ = 0;  // in all steps
};

}  // namespace qrs::dxf
