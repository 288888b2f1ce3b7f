#pragma once

#include <QHash>
#include <QObject>

#include <optional>

class QKeyEvent;

/// Keeps the repeats of a held key from doing anything anew, in all windows while it lives. Typing
/// and deleting in a text box, and the keys that move about, may repeat.
///
/// A window system tells a repeat as a release and a press of the same moment. Qt marks them as a
/// repeat when it finds both in its queue, and takes them for the user's own where the press comes
/// late. So a press that carries the time of its key's last release is a repeat too.
class KeyRepeat : public QObject {
public:
    KeyRepeat();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

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
