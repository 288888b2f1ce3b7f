#pragma once

#include <QWidget>

/// The picture of a link: two plugs, joined when it is up, apart when it is down.
class LinkPicture : public QWidget {
public:
    enum class Shows { LinkUp, LinkDown };
    explicit LinkPicture(Shows what, QWidget *parent = nullptr);
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool up;
};
