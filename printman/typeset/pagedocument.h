#pragma once

#include <QString>

namespace printman {

class FontSet;
class PageWriter;

/// A document that is being written page by page.
class PageDocument {
public:
    virtual ~PageDocument() = default;

    /// The page that is being painted.
    virtual PageWriter& page() = 0;

    /// The typefaces that the document embeds.
    virtual FontSet& fonts() = 0;

    /// Moves what the page holds to where it is kept when it has become much.
    virtual void settle() = 0;

    /// Ends the document as failed, with @p error for its reason unless it has failed before.
    ///
    /// @return false
    virtual bool fail(const QString& error) = 0;
};

/// The print engine that a PagePaintEngine paints for.
class PageTarget {
public:
    virtual ~PageTarget() = default;

    /// Starts a document; false puts the engine into the error state.
    virtual bool begin() = 0;

    /// Ends it: false when it failed or was aborted.
    virtual bool end() = 0;

    /// The document that is being written, null when there is none that still takes anything.
    virtual PageDocument* document() = 0;

    /// Device pixels an inch.
    virtual int resolution() const = 0;
};

} // namespace printman
