#include "PortList.h"

#include <QAbstractItemView>
#include <QKeyEvent>

void PortList::showPopup() {
    QComboBox::showPopup();
    if (!view()->currentIndex().isValid())
        view()->setCurrentIndex(model()->index(0, modelColumn(), rootModelIndex()));
}

void PortList::keyPressEvent(QKeyEvent *event) {
    const int key = event->key();
    if (key == Qt::Key_Down || key == Qt::Key_Up)
        showPopup();
    else
        QComboBox::keyPressEvent(event);
}
