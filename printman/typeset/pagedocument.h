#pragma once

#include <QString>

namespace printman {

class FontSet;
class PageWriter;

/// A document that is written page by page.
class PageDocument {
public:
    virtual ~PageDocument() = default;

    /// The page that is currently painted.
    virtual PageWriter& page() = 0;

    /// The typefaces that the document embeds.
    virtual FontSet& fonts() = 0;

    /// Moves the page's content to where it is kept, once there is much of it.
    virtual void settle() = 0;

    /// Ends the document as failed, for the reason @p error, unless it has failed before.
    ///
    /// @return false
    virtual bool fail(const QString& error) = 0;
};

/// The print engine that a PagePaintEngine paints for.
class PageTarget {
public:
    virtual ~PageTarget() = default;

    /// Starts a document; on failure the engine is in the error state.
    virtual bool begin() = 0;

    /// Ends it; false if it failed or was aborted.
    virtual bool end() = 0;

    /// The document that is being written; null if there is none, or it has failed or was aborted.
    virtual PageDocument* document() = 0;

    /// Device pixels per inch.
    virtual int resolution() const = 0;
};

} // namespace printman
