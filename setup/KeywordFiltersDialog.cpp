#include "setup/KeywordFiltersDialog.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QStyle>

#include "extractor/KeywordFilters.h"
#include "platform/gui/DesignFont.h"
#include "platform/gui/Latin1.h"
#include "platform/gui/Named.h"
#include "platform/gui/Twips.h"
#include "text/Strings.h"

namespace vantorin {

KeywordFiltersDialog::KeywordFiltersDialog(SetupServices& services, QWidget* parent)
    : QDialog(parent), services_(services) {
    BuildControls();
    for (const auto& keyword : services_.filters.List()) keywords->addItem(ToQt(keyword));
}

KeywordFiltersDialog* KeywordFiltersDialog::Open(SetupServices& services, QWidget* parent) {
    // One dialog at a time: a second one would show the keywords as they were
    // loaded, and closing it would write that older list over the first one's.
    static QPointer<KeywordFiltersDialog> shown;
    if (shown) {
        shown->raise();
        shown->activateWindow();
        return shown;
    }
    auto* dialog = new KeywordFiltersDialog(services, parent);
    shown = dialog;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setModal(false);
    dialog->show();
    return dialog;
}

void KeywordFiltersDialog::BuildControls() {
    setObjectName("keywordFilters");
    setWindowTitle("Keyword Filters");
    setFont(DesignFont(8));

    picture = Named(new QLabel(this), "picture");
    picture->setPixmap(style()->standardIcon(QStyle::SP_FileDialogContentsView).pixmap(32, 32));
    picture->setAlignment(Qt::AlignCenter);
    PlaceTwips(*picture, 120, 120, 600, 600);
    heading = Named(new QLabel("Keyword Filters", this), "heading");
    heading->setFont(DesignFont(12, true));
    PlaceTwips(*heading, 840, 240, 4335, 375);
    explanation = Named(
        new QLabel(
            "Whenever a URL is added to the list to be downloaded, it will be compared with the "
            "keywords in this list. If any of the keyword text exists anywhere in the URL, it will "
            "be removed from the download list.",
            this),
        "explanation");
    explanation->setWordWrap(true);
    explanation->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    PlaceTwips(*explanation, 120, 840, 5055, 975);

    keywordLabel = Named(new QLabel("Add Keyword", this), "keywordLabel");
    PlaceTwips(*keywordLabel, 120, 1920, 2415, 255);
    entry = Named(new QLineEdit(this), "entry");
    PlaceTwips(*entry, 120, 2160, 3855, 345);
    addButton = Named(new QPushButton("Add", this), "addButton");
    addButton->setDefault(true);
    PlaceTwips(*addButton, 4080, 2145, 1095, 375);

    keywords = Named(new QListWidget(this), "keywords");
    PlaceTwips(*keywords, 120, 2640, 3855, 2175);
    removeButton = Named(new QPushButton("Remove", this), "removeButton");
    PlaceTwips(*removeButton, 4080, 2640, 1095, 375);
    clearAllButton = Named(new QPushButton("Clear All", this), "clearAllButton");
    PlaceTwips(*clearAllButton, 4080, 3120, 1095, 375);
    closeButton = Named(new QPushButton("Close", this), "closeButton");
    PlaceTwips(*closeButton, 4080, 4440, 1095, 375);

    note = Named(
        new QLabel(
            "Note: Use longer filter keywords where possible to avoid filtering out wanted files.",
            this),
        "note");
    note->setWordWrap(true);
    note->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    PlaceTwips(*note, 120, 4935, 5055, 495);
    setFixedSize(Twips(*this, 5295), Twips(*this, 5550));

    for (QPushButton* b : {removeButton, clearAllButton, closeButton}) b->setAutoDefault(false);
    connect(addButton, &QPushButton::clicked, this, [this] { AddClicked(); });
    connect(removeButton, &QPushButton::clicked, this, [this] { RemoveClicked(); });
    connect(clearAllButton, &QPushButton::clicked, this, [this] { ClearAllClicked(); });
    connect(closeButton, &QPushButton::clicked, this, [this] { CloseClicked(); });
}

std::vector<std::string> KeywordFiltersDialog::Items() const {
    std::vector<std::string> items;
    for (int i = 0; i < keywords->count(); ++i) items.push_back(FromQt(keywords->item(i)->text()));
    return items;
}

void KeywordFiltersDialog::AddClicked() {
    const std::string keyword = Trim(FromQt(entry->text()));
    if (!keyword.empty()) {
        if (FilterExists(keyword, Items()))
            services_.dialogs.Ask("Filter already exists in the list!", "Filter",
                                  kInformation | kOkOnly, {});
        else
            keywords->addItem(ToQt(UCase(keyword)));
    }
    entry->clear();
    entry->setFocus();
}

void KeywordFiltersDialog::RemoveClicked() {
    QListWidgetItem* selected = keywords->currentItem();
    if (!selected || !selected->isSelected()) return;
    const int row = keywords->row(selected);
    delete keywords->takeItem(row);
    // The item that moved up into the place is selected; past the end, none is.
    if (row < keywords->count()) {
        keywords->setCurrentRow(row);
    } else {
        keywords->setCurrentRow(-1);
        keywords->clearSelection();
    }
}

void KeywordFiltersDialog::ClearAllClicked() {
    services_.dialogs.Ask("Are you sure you want to remove all the filters?", "Clear Filters",
                          kCritical | kYesNo, [this](int answer) {
                              if (answer == kAnswerYes) keywords->clear();
                          });
}

void KeywordFiltersDialog::CloseClicked() {
    reject();
}

void KeywordFiltersDialog::done(int result) {
    if (!unloaded_) {
        unloaded_ = true;
        services_.filters.Save(Items(), services_.files);
    }
    QDialog::done(result);
    if (testAttribute(Qt::WA_DeleteOnClose)) deleteLater();
}

}  // namespace vantorin
