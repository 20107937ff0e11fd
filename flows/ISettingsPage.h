#pragma once

#include "flows/CPageNote.h"

/// A page of settings, as the flows that move settings see it: a view of the catalogue's items.
///
/// Both directions visit the page's fields one by one and stop at the first that fails, what came
/// before it keeps its new content. They fail by returning false, or by an exception for a value
/// that cannot be shown or read (CConversionError, std::out_of_range).
class ISettingsPage {
public:
    virtual ~ISettingsPage() = default;

    /// Copies the items' current values into the page.
    virtual bool Refresh() = 0;

    /// What a Refresh has just shown whole came from the printer, and not from a file.
    virtual void NoteRead() {}

    /// Copies what the page shows into the items.
    virtual bool Store() = 0;

    /// A flow that moves the page's settings has ended so. Not told of one that stops because the
    /// program closes, or because another has taken over what was left to do.
    virtual void NoteEnd(const CPageNote& /*p_objNote*/) {}
};
