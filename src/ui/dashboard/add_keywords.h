// SPDX-License-Identifier: GPL-3.0-or-later
// The card in which keywords are typed, pasted or imported, for one storefront or several.
#pragma once

#include "effects/autocomplete_suggesting.h"
#include "ui/dashboard/keyword_plan.h"
#include "ui/suggestions/typed_suggestions.h"
#include "ui_kit/widgets/file_exchange.h"

#include <QPointer>
#include <QTimer>
#include <QUuid>
#include <QWidget>

#include <memory>
#include <optional>

namespace veltrix
{

class Button;
class ImportPreview;
class KeywordActions;
class Overlay;
class StorefrontChecklist;
class StorefrontCheckModel;
class SuggestionPanel;
class TagField;
class TextArea;
class TextLabel;

/// Says what would be added while it is entered, with which tags, and suggests keywords for the
/// line with the caret. Beside the field is the list of storefronts; in a narrow window it is
/// behind a button below the field.
class AddKeywordsCard final : public QWidget
{
    Q_OBJECT

public:
    /// Where suggestions come from.
    struct Suggesting {
        /// Nothing is suggested without it.
        std::shared_ptr<AutocompleteSuggesting> source;
        /// Outlives the card.
        Clock &clock;
    };

    /// `country` is the storefront that is checked at first; `planner` knows what is tracked.
    AddKeywordsCard(const QString &country, const KeywordPlanner &planner,
                    const Suggesting &suggesting, QWidget *parent = nullptr);
    ~AddKeywordsCard() override;

    /// Opens a card at `opener` that adds keywords to an app.
    static AddKeywordsCard *open(QWidget *opener, KeywordActions &actions,
                                 std::optional<QUuid> appId, const QString &country);

    /// A text under the field, in place of what would be added.
    void showProblem(const QString &problem);
    /// Takes the file's keywords beside those of the field, in place of a file before.
    void showFile(const FileExchange::OpenedFile &file);
    /// Tells what became of what was submitted. What was refused stays in the field, with the
    /// reasons below, until it is mended or the card is closed.
    void showAdded(const AdmissionCount &count, const KeywordPlanner &planner);
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    /// `tags` are for all that is new.
    void submitted(const KeywordPlan &file, const KeywordPlan &typed, const QStringList &tags);
    void importRequested();
    void fileBrought(const QString &path);
    void cancelled();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    [[nodiscard]] QWidget *makeContent();
    [[nodiscard]] QWidget *makeFooter();
    void connectParts();
    void connectSuggestions();
    /// Suggests for the keyword with the caret, in the storefront that was checked first.
    void followCaret();
    void takeSuggestion(const QString &term);
    void submit();
    /// Plans the file and the field anew; the field alone where only its text has changed.
    void planAll();
    void planTyped();
    void describeFile();
    void describeTyped();
    void setNote(const QString &text);
    void removeFile();
    void openStorefronts();
    [[nodiscard]] bool isNarrow() const;
    void arrange();

    struct ShownFile {
        KeywordFile content;
        /// Why there is nothing of it to add; empty where there is.
        QString problem;
    };

    QString m_country;
    KeywordPlanner m_planner;
    /// With what the file adds.
    KeywordPlanner m_afterFile;
    std::optional<ShownFile> m_file;
    /// The field's text as it was planned last.
    QString m_text;
    KeywordPlan m_filePlan;
    KeywordPlan m_typedPlan;

    TypedSuggestions *m_suggestions;
    StorefrontCheckModel *m_storefronts;
    TextArea *m_field;
    TextLabel *m_note;
    TextLabel *m_refusals;
    SuggestionPanel *m_suggested;
    Button *m_pick;
    StorefrontChecklist *m_list;
    TagField *m_tags;
    ImportPreview *m_preview;
    Button *m_import;
    Button *m_cancel;
    Button *m_add;
    QWidget *m_content;
    QWidget *m_footer;
    QPointer<Overlay> m_openList;
    QTimer m_typingPause;
};

} // namespace veltrix
