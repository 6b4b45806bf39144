#pragma once

#include <QString>

#include <string_view>

class QWidget;

namespace platform::qt {

/// UTF-8 to a text of the toolkit.
QString text(std::string_view utf8);

/// A text for a place where Qt would take it for HTML when it looks like it, above all tool tips: shown there letter by
/// letter. Every text that is not this program's own goes through it; one that can not be taken for HTML stays as it
/// is.
QString letters(const QString& text);

/// A text for a menu entry, where an ampersand would mark the next letter.
QString menuText(const QString& text);

/// A text for a window's title, where "[*]" would stand for the mark of a changed document.
QString titleText(const QString& text);

/// Sees to it, for the whole application, that labels that were not told what they show, and the tool tips that widgets
/// were given, show their texts letter by letter. Further calls do nothing.
void keepTextsPlain();

} // namespace platform::qt
