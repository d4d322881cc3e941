#pragma once

/// Where the library can do better than it always did. Every field is off by default, which keeps to what hosts know;
/// each is of its own. Set them before the first view is made, and leave them.
struct QZPaintOptions {
    /// Texts and keys go into the store as values, whatever quotes are in them. Else they are pasted into the
    /// statement: a quote in a text loses the figures from there on, and a key with an unpaired one is refused.
    bool bindsTexts = false;
    /// After a load that failed half-way or met a locked or broken file, saving is barred until a load succeeds. Else
    /// the next save replaces the stored group by the few figures that could be read.
    bool failedLoadBarsSave = false;
    /// Rows that the pane did not take at loading, being of types that are unknown or that it does not accept, survive
    /// a save. Else a save leaves only what is shown.
    bool keepsForeignRows = false;
    /// Figures that the eye hides are out of the mouse's reach. Else a click selects them.
    bool hiddenFiguresIgnoreMouse = false;
    /// The magnet's button looks pressed exactly while the magnet is on. Else the eye lets go of it without switching
    /// the magnet off, and it tells the opposite from then on.
    bool magnetButtonTellsTruth = false;
    /// A new figure takes the line that its user last chose in the strip. Else it takes the one that the strip last
    /// showed: after a red mark was selected, every figure is red.
    bool newFiguresTakeChosenLine = false;

    /// A locked figure stays: it can be selected and styled, but neither dragged nor deleted, by itself or with all.
    /// Else the lock is stored with the figure and means nothing.
    bool lockedFiguresStay = false;
    /// A save gives the table an index of its groups where there is none: finding a group no longer reads the whole
    /// file. The index then stays, and serves whoever opens the file. Else no file gets one.
    bool indexesGroups = false;

    [[nodiscard]] static const QZPaintOptions& current();
    static void setCurrent(const QZPaintOptions& options);
};
