/// @file
/// One page, as large as the window allows.
#pragma once

#include "page_store.h"

#include <QWidget>

namespace kestrel {

/// Shows a page fitted into the widget; without a page a hint what to do.
class PageView : public QWidget
{
    Q_OBJECT

public:
    explicit PageView(QWidget* parent = nullptr);

    /// Shows @p page; its picture is read from its file.
    void setPage(const Page& page);
    /// Shows the hint again.
    void clear();

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QImage m_picture;
    QImage m_fitted; ///< m_picture in the size it is painted in; null when it has to be made anew
};

} // namespace kestrel
