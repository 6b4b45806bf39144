#pragma once

#include <QProxyStyle>
#include <QStyleOption>

namespace platform::qt {

/// Fusion with flat surfaces, thin lines and one accent: fields, check boxes, radio buttons, the focus mark and the
/// title bars of document windows are drawn here, in the colours of the appearance.
class PlainStyle : public QProxyStyle {
    Q_OBJECT
public:
    PlainStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override;
    QIcon standardIcon(StandardPixmap standard, const QStyleOption* option, const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;

private:
    /// Around lists, trees and grids.
    void drawViewFrame(const QStyleOption& option, QPainter& painter, bool focused) const;
    void drawField(const QStyleOption& option, QPainter& painter, bool readOnly) const;
    void drawCheckBox(const QStyleOption& option, QPainter& painter) const;
    void drawRadioButton(const QStyleOption& option, QPainter& painter) const;
    /// Of a combo box that is typed into.
    void drawComboField(const QStyleOptionComboBox& option, QPainter& painter, const QWidget* widget) const;
    void drawSpinField(const QStyleOptionSpinBox& option, QPainter& painter, const QWidget* widget) const;
    void drawTitleBar(const QStyleOptionTitleBar& option, QPainter& painter, const QWidget* widget) const;
    void drawMdiControls(const QStyleOptionComplex& option, QPainter& painter, const QWidget* widget) const;
};

} // namespace platform::qt
