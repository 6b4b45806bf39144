#pragma once

#include <QHeaderView>

namespace platform::qt {

class TreeView;

/// Column headers under a slim line with the caption of the band that holds them.
class TreeHeader : public QHeaderView {
    Q_OBJECT
public:
    explicit TreeHeader(TreeView& tree);

    void setBandCaption(const QString& caption);
    const QString& bandCaption() const { return bandCaption_; }
    /// Height of the band's line in pixels; 0 without a caption.
    int bandHeight() const;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;

private:
    TreeView& tree_;
    QString bandCaption_;
};

} // namespace platform::qt
