#include "ProgramLook.h"

#include "Colours.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

void applyProgramLook() {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette look;
    look.setColor(QPalette::Window, colour::Window);
    look.setColor(QPalette::WindowText, colour::Text);
    look.setColor(QPalette::Base, colour::Field);
    look.setColor(QPalette::AlternateBase, colour::Window);
    look.setColor(QPalette::Text, colour::Text);
    look.setColor(QPalette::Button, colour::Neutral);
    look.setColor(QPalette::ButtonText, colour::Text);
    look.setColor(QPalette::PlaceholderText, colour::FaintText);
    look.setColor(QPalette::Highlight, colour::Focus);
    look.setColor(QPalette::HighlightedText, Qt::white);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        look.setColor(QPalette::Disabled, role, colour::DisabledText);
    QApplication::setPalette(look);
    QFont font = QApplication::font();
    font.setPixelSize(13);
    QApplication::setFont(font);
}
