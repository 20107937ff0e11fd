#pragma once

#include "jobs/CWritePlan.h"

/// The record of a change while it is under way: it outlives the program, whatever ends that.
class IWriteJournal {
public:
    virtual ~IWriteJournal() = default;

    /// Writes the record, safely on the disk. False when that fails.
    virtual bool Open(const CWritePlan& p_objPlan) = 0;

    /// Removes it, safely. False when it may still be there.
    virtual bool Close() = 0;
};
