#pragma once

#include <QtCore/QIdentityProxyModel>

/// The theme catalogue as a flat list, for QAbstractItemModelTester.
///
/// ThemeManager::rowCount() ignores its parent, so each row claims the rows of the whole list. That
/// is meant, but a tester takes it for a tree and stops there. Here rows have no children, so that
/// all the rest is tested.
class FlatModel : public QIdentityProxyModel
{
    Q_OBJECT

public:
    explicit FlatModel(QAbstractItemModel *source) { setSourceModel(source); }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : QIdentityProxyModel::rowCount(parent);
    }
};
