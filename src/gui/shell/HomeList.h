#pragma once
// The Home tab: the favourites list lvwVMs inside the frame fraFavorites, the New and Open
// buttons, and the list's pop-up menu. The main window owns the favourites; this widget
// shows them and reports what the user asked for.
#include <QWidget>
#include <vector>

#include "core/shell/Favorites.h"

class QGroupBox;
class QMenu;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace arden::gui {

class HomeList : public QWidget {
    Q_OBJECT
public:
    explicit HomeList(QWidget* parent = nullptr);

    // Rebuilds the list from the favourites, in array order, with the icon of each status.
    void UpdateFavoritesList(const std::vector<FavoriteRecord>& favorites);
    void UpdateUILabels(int languageOffset);

    // The selected row: display name, path and version; empty name when none is selected.
    QString selectedName() const;
    QString selectedPath() const;
    int selectedVersion() const;

    QTreeWidget* list() const { return lvwVMs_; }
    QMenu* popupMenu() const { return mnuPopup_; }

signals:
    void newRequested();
    void openOtherRequested();
    void editRequested(const QString& path, int configVersion);
    void launchRequested(const QString& path);
    void removeRequested(const QString& displayName);
    void selectionChanged(const QString& path);

private:
    QTreeWidgetItem* selected() const;

    QGroupBox* fraFavorites_;
    QTreeWidget* lvwVMs_;
    QPushButton* cmdNew_;
    QPushButton* cmdOpen_;
    QMenu* mnuPopup_;
    QAction* mnuPopupNew_;
    QAction* mnuPopupEdit_;
    QAction* mnuPopupEditOther_;
    QAction* mnuPopupLaunch_;
    QAction* mnuPopupRemove_;
};

}  // namespace arden::gui
