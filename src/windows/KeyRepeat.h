#pragma once

#include <QHash>
#include <optional>

class QEvent;
class QKeyEvent;

/// Tells the repeats of a held key, which are to do nothing anew. Typing and deleting in a text
/// box, and the keys that move about, may repeat.
///
/// A window system tells a repeat as a release and a press of the same moment. Qt marks them as a
/// repeat when it finds both in its queue, and takes them for the user's own where the press comes
/// late. So a press that carries the time of its key's last release is a repeat too.
class KeyRepeat {
public:
    /// Whether an event is to be dropped. An event may be asked about several times, on its way
    /// from the window to the control, and is answered alike each time.
    bool swallows(QEvent &event);

private:
    /// What became of a key since the user pressed it.
    struct Held {
        std::optional<quint64> released; ///< when a release came that was not marked as a repeat
        bool over = false; ///< that release has done what it does; the others are mute
    };

    bool swallowsPress(QKeyEvent &key);
    bool swallowsRelease(const QKeyEvent &key);

    QHash<quint64, Held> keys;
};
