// SPDX-License-Identifier: MIT
#include <tarvonix/platform/colorconversion.h>

namespace tarvonix {

namespace {

// Index of a system colour -> the palette entry that plays its part.
QColor systemColour(int index, const QPalette &palette)
{
    switch (index) {
    case 0: // scroll bar
    case 15: // button face
    case 22: // 3-D light
        return palette.color(QPalette::Button);
    case 1: // desktop
    case 12: // application workspace
        return palette.color(QPalette::Dark);
    case 2: // active title
        return palette.color(QPalette::Highlight);
    case 3: // inactive title
    case 16: // button shadow
        return palette.color(QPalette::Mid);
    case 4: // menu
    case 5: // window background
        return palette.color(QPalette::Base);
    case 6: // window frame
    case 21: // 3-D dark shadow
        return palette.color(QPalette::Shadow);
    case 7: // menu text
    case 8: // window text
        return palette.color(QPalette::Text);
    case 9: // title text
    case 14: // highlight text
        return palette.color(QPalette::HighlightedText);
    case 13: // highlight
        return palette.color(QPalette::Highlight);
    case 17: // grey text
        return palette.color(QPalette::Disabled, QPalette::Text);
    case 18: // button text
        return palette.color(QPalette::ButtonText);
    case 20: // button highlight
        return palette.color(QPalette::Light);
    case 23: // tooltip text
        return palette.color(QPalette::ToolTipText);
    case 24: // tooltip background
        return palette.color(QPalette::ToolTipBase);
    default:
        return palette.color(QPalette::WindowText);
    }
}

} // namespace

bool isSystemColour(qint32 colour)
{
    return colour < 0;
}

QColor toQColor(qint32 colour, const QPalette &palette)
{
    if (isSystemColour(colour))
        return systemColour(colour & 0xFF, palette);
    return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

qint32 fromQColor(const QColor &colour)
{
    const QColor rgb = colour.toRgb();
    return qint32(rgb.red()) | (qint32(rgb.green()) << 8) | (qint32(rgb.blue()) << 16);
}

} // namespace tarvonix
