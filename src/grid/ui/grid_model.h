#pragma once

#include "grid/grid.h"

#include <QAbstractTableModel>
#include <QPixmap>
#include <functional>

namespace orva {

// Draws a picture key at about `px_size` pixels high; a null pixmap means the
// key is unknown and the cell simply has no picture.
using PictureProvider = std::function<QPixmap(const QString& key, int px_size)>;

// Qt's face of a Grid, so a QTableView and the accessibility tree see its
// cells. The first fixed row and the first fixed column become the view's
// headers: model (row, column) is grid (row + header_rows(), column +
// header_cols()). Row and column counts are read at reload() only, because a
// grid changes under the model without announcing rows one by one.
class GridModel : public QAbstractTableModel {
    Q_OBJECT
  public:
    enum Role {
        PictureKeyRole = Qt::UserRole + 1, // QString
        PictureAlignmentRole,              // int, an Align
        BorderRole,                        // QVariantList: colour, left, top, right, bottom
    };

    explicit GridModel(QObject* parent = nullptr);

    void setGrid(Grid* grid); // not owned; nullptr shows nothing
    Grid* grid() const { return grid_; }
    // Re-reads the grid: one model reset when its shape (rows, columns,
    // header mapping) changed, else one change of every cell, which leaves
    // an open editor in place; the cell `keep` (one being edited) is not
    // told, so its editor keeps what was typed.
    void reload(const QModelIndex& keep = QModelIndex());

    int header_rows() const { return header_rows_; }
    int header_cols() const { return header_cols_; }
    int grid_row(int model_row) const { return model_row + header_rows_; }
    int grid_col(int model_col) const { return model_col + header_cols_; }
    int model_row(int grid_row) const { return grid_row - header_rows_; }
    int model_col(int grid_col) const { return grid_col - header_cols_; }
    // Whether the grid still has the cell; a view may ask about cells of a
    // grid that has shrunk since the last reload().
    bool has_cell(int grid_row, int grid_col) const;

    // What a grid cell looks like, in Qt's terms; an absent cell gives empty
    // values.
    QVariant cell_data(int grid_row, int grid_col, int role) const;

    void set_picture_provider(PictureProvider provider) { pictures_ = std::move(provider); }
    QPixmap picture(const QString& key, int px_size) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // EditRole writes a text; CheckStateRole ticks or clears the box of a
    // Boolean cell that has one. Either is told as textEdited.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

  signals:
    // A text typed into a cell, or a box ticked, has been written to the grid.
    void textEdited(int grid_row, int grid_col, const QString& text);

  private:
    Grid* grid_ = nullptr;
    int rows_ = 0, cols_ = 0;
    int header_rows_ = 0, header_cols_ = 0;
    bool reset_due_ = true; // a new grid always resets
    PictureProvider pictures_;
};

// Qt alignment flags of a grid alignment; General is left for texts and right
// for numbers, as the grid's callers expect.
Qt::Alignment qt_alignment(Align a, const QString& text);
QColor qt_color(Color c);

} // namespace orva
