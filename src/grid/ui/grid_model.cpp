#include "grid/ui/grid_model.h"

#include <QBrush>
#include <QColor>
#include <QFont>

namespace orva {

Qt::Alignment qt_alignment(Align a, const QString& text) {
    switch (a) {
    case Align::LeftTop:
        return Qt::AlignLeft | Qt::AlignTop;
    case Align::LeftCenter:
        return Qt::AlignLeft | Qt::AlignVCenter;
    case Align::LeftBottom:
        return Qt::AlignLeft | Qt::AlignBottom;
    case Align::CenterTop:
        return Qt::AlignHCenter | Qt::AlignTop;
    case Align::CenterCenter:
        return Qt::AlignCenter;
    case Align::CenterBottom:
        return Qt::AlignHCenter | Qt::AlignBottom;
    case Align::RightTop:
        return Qt::AlignRight | Qt::AlignTop;
    case Align::RightCenter:
        return Qt::AlignRight | Qt::AlignVCenter;
    case Align::RightBottom:
        return Qt::AlignRight | Qt::AlignBottom;
    case Align::General:
        break;
    }
    bool number = false;
    text.trimmed().toDouble(&number);
    return (number ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QColor qt_color(Color c) {
    return QColor(red_of(c), green_of(c), blue_of(c));
}

GridModel::GridModel(QObject* parent) : QAbstractTableModel(parent) {}

void GridModel::setGrid(Grid* grid) {
    grid_ = grid;
    reset_due_ = true;
    reload();
}

void GridModel::reload(const QModelIndex& keep) {
    if (grid_ && !reset_due_) {
        const int hr = grid_->FixedRows() > 0 ? 1 : 0, hc = grid_->FixedCols() > 0 ? 1 : 0;
        if (hr == header_rows_ && hc == header_cols_ && std::max(grid_->Rows() - hr, 0) == rows_ &&
            std::max(grid_->Cols() - hc, 0) == cols_) {
            // The same shape: telling the view that everything changed keeps
            // an open cell editor, and the user's typing, alive.
            if (rows_ > 0 && cols_ > 0) {
                // The cell being edited is left out: telling its editor would
                // put the grid's text back over what the user has typed.
                const auto changed = [this](int r1, int c1, int r2, int c2) {
                    if (r1 <= r2 && c1 <= c2) emit dataChanged(index(r1, c1), index(r2, c2));
                };
                if (!keep.isValid()) {
                    changed(0, 0, rows_ - 1, cols_ - 1);
                } else {
                    const int kr = keep.row(), kc = keep.column();
                    changed(0, 0, kr - 1, cols_ - 1);
                    changed(kr, 0, kr, kc - 1);
                    changed(kr, kc + 1, kr, cols_ - 1);
                    changed(kr + 1, 0, rows_ - 1, cols_ - 1);
                }
            }
            if (cols_ > 0) emit headerDataChanged(Qt::Horizontal, 0, cols_ - 1);
            if (rows_ > 0) emit headerDataChanged(Qt::Vertical, 0, rows_ - 1);
            return;
        }
    }
    reset_due_ = false;
    beginResetModel();
    if (grid_) {
        // Only one fixed row and one fixed column fit into Qt's headers; any
        // further fixed ones scroll with the rest and are painted as fixed.
        header_rows_ = grid_->FixedRows() > 0 ? 1 : 0;
        header_cols_ = grid_->FixedCols() > 0 ? 1 : 0;
        rows_ = std::max(grid_->Rows() - header_rows_, 0);
        cols_ = std::max(grid_->Cols() - header_cols_, 0);
    } else {
        header_rows_ = header_cols_ = rows_ = cols_ = 0;
    }
    endResetModel();
}

bool GridModel::has_cell(int grid_row, int grid_col) const {
    return grid_ && grid_row >= 0 && grid_col >= 0 && grid_row < grid_->Rows() &&
           grid_col < grid_->Cols();
}

QPixmap GridModel::picture(const QString& key, int px_size) const {
    if (key.isEmpty() || !pictures_) return {};
    return pictures_(key, px_size);
}

QVariant GridModel::cell_data(int r, int c, int role) const {
    // Checked first, so that painting never leaves an error for the logic.
    if (!has_cell(r, c)) return {};
    const Grid& g = *grid_;
    // A Boolean cell is its box: its "0" or "-1" is nothing to read out.
    const bool boolean = g.ColDataType(c) == ColType::Boolean;
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
    case Qt::AccessibleTextRole:
        if (boolean) return {};
        return g.TextMatrix(r, c);
    case Qt::CheckStateRole:
        switch (g.CellChecked(r, c)) {
        case CheckBox::None:
            return {};
        case CheckBox::Unchecked:
            return int(Qt::Unchecked);
        case CheckBox::Checked:
            return int(Qt::Checked);
        }
        return {};
    case Qt::BackgroundRole:
        return QBrush(qt_color(g.Cell(CellSetting::BackColor, r, c).toUInt()));
    case Qt::ForegroundRole:
        return QBrush(qt_color(g.Cell(CellSetting::ForeColor, r, c).toUInt()));
    case Qt::FontRole: {
        QFont f(g.Cell(CellSetting::FontName, r, c).toString());
        f.setPointSizeF(g.Cell(CellSetting::FontSize, r, c).toDouble());
        f.setBold(g.Cell(CellSetting::FontBold, r, c).toBool());
        f.setItalic(g.Cell(CellSetting::FontItalic, r, c).toBool());
        f.setUnderline(g.Cell(CellSetting::FontUnderline, r, c).toBool());
        return f;
    }
    case Qt::TextAlignmentRole:
        return int(
            qt_alignment(Align(g.Cell(CellSetting::Alignment, r, c).toInt()), g.TextMatrix(r, c)));
    case PictureKeyRole:
        return g.Cell(CellSetting::Picture, r, c);
    case PictureAlignmentRole:
        return g.Cell(CellSetting::PictureAlignment, r, c);
    case BorderRole: {
        const CellBorderSpec b = g.border(r, c);
        return QVariantList{b.color, b.left, b.top, b.right, b.bottom};
    }
    default:
        return {};
    }
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : cols_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    return cell_data(grid_row(index.row()), grid_col(index.column()), role);
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal) {
        if (!header_rows_) return {};
        return cell_data(0, grid_col(section), role);
    }
    if (!header_cols_) return {};
    return cell_data(grid_row(section), 0, role);
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    if (!index.isValid() || !grid_) return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    const int r = grid_row(index.row()), c = grid_col(index.column());
    const bool fixed = r < grid_->FixedRows() || c < grid_->FixedCols();
    if (!grid_->Editable() || fixed || !has_cell(r, c)) return f;
    if (grid_->ColDataType(c) != ColType::Boolean)
        f |= Qt::ItemIsEditable;
    else if (grid_->CellChecked(r, c) != CheckBox::None)
        f |= Qt::ItemIsUserCheckable;
    return f;
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || (role != Qt::EditRole && role != Qt::CheckStateRole)) return false;
    const int r = grid_row(index.row()), c = grid_col(index.column());
    if (!has_cell(r, c)) return false;
    if (role == Qt::CheckStateRole) {
        // Only a box can be ticked; a cell without one stays without.
        if (grid_->CellChecked(r, c) == CheckBox::None) return false;
        grid_->setCellChecked(
            r, c, value.toInt() == Qt::Checked ? CheckBox::Checked : CheckBox::Unchecked);
    } else {
        grid_->setTextMatrix(r, c, value.toString());
    }
    const QString text = grid_->TextMatrix(r, c);
    emit dataChanged(index, index);
    emit textEdited(r, c, text);
    return true;
}

} // namespace orva
