#include "setup/zFilter.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QStyle>

#include "extractor/KeywordFilters.h"
#include "platform/Text.h"
#include "platform/gui/DesignFont.h"
#include "platform/gui/Latin1.h"
#include "platform/gui/Twips.h"

namespace vantorin {

zFilter::zFilter(SetupServices& services, QWidget* parent) : QDialog(parent), services_(services) {
    BuildControls();
    for (const auto& keyword : KeywordFilterList(services_.vars.KeywordFilters))
        List1->addItem(ToQt(keyword));
}

zFilter* zFilter::ShowModeless(SetupServices& services, QWidget* parent) {
    // One dialog at a time: a second one would show the keywords as they were
    // loaded, and closing it would write that older list over the first one's.
    static QPointer<zFilter> shown;
    if (shown) {
        shown->raise();
        shown->activateWindow();
        return shown;
    }
    auto* dialog = new zFilter(services, parent);
    shown = dialog;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setModal(false);
    dialog->show();
    return dialog;
}

void zFilter::BuildControls() {
    setWindowTitle("Keyword Filters");
    setFont(DesignFont(8));

    Image1 = new QLabel(this);
    Image1->setPixmap(style()->standardIcon(QStyle::SP_FileDialogContentsView).pixmap(32, 32));
    Image1->setAlignment(Qt::AlignCenter);
    PlaceTwips(*Image1, 120, 120, 600, 600);
    Label2 = new QLabel("Keyword Filters", this);
    Label2->setFont(DesignFont(12, true));
    PlaceTwips(*Label2, 840, 240, 4335, 375);
    Label1 = new QLabel(
        "Whenever a URL is added to the list to be downloaded, it will be compared with the "
        "keywords in this list. If any of the keyword text exists anywhere in the URL, it will "
        "be removed from the download list.",
        this);
    Label1->setWordWrap(true);
    Label1->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    PlaceTwips(*Label1, 120, 840, 5055, 975);

    Label3 = new QLabel("Add Keyword", this);
    PlaceTwips(*Label3, 120, 1920, 2415, 255);
    Text1 = new QLineEdit(this);
    PlaceTwips(*Text1, 120, 2160, 3855, 345);
    Command1 = new QPushButton("Add", this);
    Command1->setDefault(true);
    PlaceTwips(*Command1, 4080, 2145, 1095, 375);

    List1 = new QListWidget(this);
    PlaceTwips(*List1, 120, 2640, 3855, 2175);
    Command2 = new QPushButton("Remove", this);
    PlaceTwips(*Command2, 4080, 2640, 1095, 375);
    Command3 = new QPushButton("Clear All", this);
    PlaceTwips(*Command3, 4080, 3120, 1095, 375);
    Command4 = new QPushButton("Close", this);
    PlaceTwips(*Command4, 4080, 4440, 1095, 375);

    Label4 = new QLabel(
        "Note: Use longer filter keywords where possible to avoid filtering out wanted files.",
        this);
    Label4->setWordWrap(true);
    Label4->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    PlaceTwips(*Label4, 120, 4935, 5055, 495);
    setFixedSize(Twips(*this, 5295), Twips(*this, 5550));

    for (QPushButton* b : {Command2, Command3, Command4}) b->setAutoDefault(false);
    connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
    connect(Command2, &QPushButton::clicked, this, [this] { Command2_Click(); });
    connect(Command3, &QPushButton::clicked, this, [this] { Command3_Click(); });
    connect(Command4, &QPushButton::clicked, this, [this] { Command4_Click(); });
}

std::vector<std::string> zFilter::Items() const {
    std::vector<std::string> items;
    for (int i = 0; i < List1->count(); ++i) items.push_back(FromQt(List1->item(i)->text()));
    return items;
}

void zFilter::Command1_Click() {
    const std::string keyword = Trim(FromQt(Text1->text()));
    if (!keyword.empty()) {
        if (FilterExists(keyword, Items()))
            services_.dialogs.Ask("Filter already exists in the list!", "Filter",
                                  kInformation | kOkOnly, {});
        else
            List1->addItem(ToQt(UCase(keyword)));
    }
    Text1->clear();
    Text1->setFocus();
}

void zFilter::Command2_Click() {
    QListWidgetItem* selected = List1->currentItem();
    if (!selected || !selected->isSelected()) return;
    const int row = List1->row(selected);
    delete List1->takeItem(row);
    // The item that moved up into the place is selected; past the end, none is.
    if (row < List1->count()) {
        List1->setCurrentRow(row);
    } else {
        List1->setCurrentRow(-1);
        List1->clearSelection();
    }
}

void zFilter::Command3_Click() {
    services_.dialogs.Ask("Are you sure you want to remove all the filters?", "Clear Filters",
                          kCritical | kYesNo, [this](int answer) {
                              if (answer == kAnswerYes) List1->clear();
                          });
}

void zFilter::Command4_Click() {
    reject();
}

void zFilter::done(int result) {
    if (!unloaded_) {
        unloaded_ = true;
        SaveKeywordFilters(Items(), services_.vars.KeywordFilters, services_.fs);
    }
    QDialog::done(result);
    if (testAttribute(Qt::WA_DeleteOnClose)) deleteLater();
}

}  // namespace vantorin
