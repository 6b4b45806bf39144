#pragma once

#include <QTranslator>

namespace host {

/// The texts of the toolkit's own that this program shows, in Italian: context menus of fields, the window menu, the
/// choice of a file. Complete translations are a package of their own that a machine may lack; installed after this
/// one, they come first.
class ToolkitTexts : public QTranslator {
    Q_OBJECT
public:
    using QTranslator::QTranslator;
    /// The same for every number; a null text for what is not known.
    QString translate(const char* context, const char* source, const char* disambiguation = nullptr,
                      int number = -1) const override;
    bool isEmpty() const override { return false; }
};

} // namespace host
