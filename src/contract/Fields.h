#pragma once

#include "contract/Controls.h"
#include "contract/Recordset.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace contract {

class Cinterface;

/// One date, typed as "dd/mm/yyyy" or chosen in a calendar. What is no date stays in the field, which says so.
class DateField : public Control {
public:
    /// The text as it stands, blanks included.
    virtual std::string text() const = 0;
    virtual void setText(std::string_view text) = 0;
    /// Whether the text, blanks around it apart, is a day of the calendar. The empty field holds none. What is typed
    /// counts as finished: a date typed in short is written in full, and what is none is said at the field.
    virtual bool hasValidDate() const = 0;

    Event<> Change; ///< the text changed, by the user or the program
};

class ComboBox : public Control {
public:
    virtual void addItem(std::string_view text) = 0;
    virtual int itemCount() const = 0;
    /// Position counted from 0, -1 for none.
    virtual int position() const = 0;
    /// Raises Change when the position changes, as the user's choice does. Positions outside the items count as none.
    virtual void setPosition(int position) = 0;

    Event<> Change;
};

class CheckBox : public Captioned {
public:
    virtual bool checked() const = 0;
    virtual void setChecked(bool checked) = 0;
};

/// A code with a button that opens a list to choose it from.
class LookupField : public TextField {
public:
    Event<> Lookup; ///< the list is wanted: the button, F1 or control and F1
    Event<> Decode; ///< the code changed: its description is wanted
};

/// What the host knows of a side's or form's data-entry frame beyond its control: whether it may be left.
class VirtualFrameHandler {
public:
    VirtualFrameHandler() = default;
    VirtualFrameHandler(const VirtualFrameHandler&) = delete;
    VirtualFrameHandler& operator=(const VirtualFrameHandler&) = delete;
    virtual ~VirtualFrameHandler() = default;

    /// Whether the form may close; with ask, the user may be asked about unsaved changes.
    virtual bool closeQuery(bool ask) = 0;
    virtual void close() = 0;
};

/// A host data-entry frame: it shows the current record of a record set in the fields bound to it, and saves it.
class DataFrame : public Frame {
public:
    /// Edit states of the record shown.
    static constexpr int browsing = 0;
    static constexpr int editing = 1;
    static constexpr int inserting = 2;

    /// Takes the frame's context. The interface is passed by reference and may be replaced.
    virtual void initialise(Cinterface*& host, std::shared_ptr<Connection> connection,
                            std::shared_ptr<Recordset> records, const Statement& statement,
                            std::string_view keyField) = 0;

    /// Takes the rows to show and gives the frame's data object: the record set from which the frame's controls read.
    virtual std::shared_ptr<Recordset> load(const Statement& statement, std::shared_ptr<Recordset> records) = 0;

    virtual void bindField(DateField& control, std::string_view field) = 0;
    /// The item's position is the value.
    virtual void bindField(ComboBox& control, std::string_view field) = 0;
    virtual void bindField(CheckBox& control, std::string_view field) = 0;
    virtual void bindField(TextField& control, std::string_view field) = 0;

    /// Table that a save writes, with the columns that make its key.
    virtual void setTable(std::string_view table, const std::vector<std::string>& keyColumns) = 0;
    /// Values that a record that does not exist yet shows.
    virtual void setDefault(std::string_view field, const contract::Value& value) = 0;
    /// A value of the record that no control shows.
    virtual void setRecordValue(std::string_view field, const contract::Value& value) = 0;

    /// Shows the current record, or a new one with the defaults where there is none.
    virtual void show() = 0;
    virtual int status() const = 0;
    /// Whether what the fields hold differs from the record.
    virtual bool changed() const = 0;
    /// Raises BeforeUpdate, then writes the record if it still holds what was shown (else throws). False: refused, by
    /// BeforeUpdate or since a date field holds what is no date; that one gets the focus, and nothing was raised.
    virtual bool save() = 0;
    /// The fields show the record again.
    virtual void undo() = 0;
    virtual void close() = 0;

    Event<bool&> BeforeUpdate; ///< before a save; set to true it cancels
    Event<int> ChangeStatus;   ///< new status
};

/// Buttons to go from record to record of a data-entry frame.
class GridNavigator : public Control {
public:
    /// Captions "primo", "precedente", "successivo", "ultimo".
    virtual void bind(DataFrame& frame) = 0;
    virtual void setAllowInsert(bool allowed) = 0;
    virtual void setAllowDelete(bool allowed) = 0;
    virtual void setAskBeforeMove(bool ask) = 0;
    virtual void release() = 0;
};

/// The host's workflow of a link, reached through the state field.
class WorkflowState {
public:
    WorkflowState() = default;
    WorkflowState(const WorkflowState&) = delete;
    WorkflowState& operator=(const WorkflowState&) = delete;
    virtual ~WorkflowState() = default;

    /// A new global identifier, 36 characters; later operations without a GUID of their own act on it.
    virtual std::string GetNewGUID() = 0;
    /// Gives the state of one link to another.
    virtual void DuplicaStato(std::string_view from, std::string_view to) = 0;
    /// Selects the workflow's default state: the lowest WF02_ID. Nothing is selected when there are no states.
    virtual void GetDefaultFlussoStato() = 0;
    /// Gives the selected state to the GUID last set, asked for, or made by GetNewGUID.
    virtual void ConfermaStato() = 0;
    /// Gives the selected state to this GUID, whatever the operations before were about: what a field that is bound to
    /// a link confirms.
    virtual void ConfermaStatoDi(std::string_view guid) {
        GetDescrizioneStatoFromGUID(guid);
        ConfermaStato();
    }
    /// Description of the state of a GUID, empty when it has none.
    virtual std::string GetDescrizioneStatoFromGUID(std::string_view guid) = 0;

    /// The same for a list, to be shown; leaves the GUID that the other operations act on.
    virtual std::vector<std::string> descriptions(const std::vector<std::string>& guids) = 0;
};

/// The host's field that shows and changes the workflow state of a link.
class WorkflowStateField : public Captioned {
public:
    /// Nothing takes the binding away.
    virtual void setObject(std::shared_ptr<WorkflowState> object) = 0;
    virtual std::shared_ptr<WorkflowState> object() const = 0;

    /// GUID of the link whose state is shown.
    virtual std::string value() const = 0;
    virtual void setValue(std::string_view guid) = 0;
    /// "^{F1}" (control and F1) opens the list of states; others do nothing.
    virtual void sendKeys(std::string_view keys) = 0;
    /// Whether the user has chosen a state that is not confirmed yet.
    virtual bool stateChosen() const = 0;

    Event<> AfterItem; ///< the user left the field or its list
};

} // namespace contract
