#pragma once

#include "component/Programma.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace prove {

/// Every call that the component makes of its host while one of its events runs - services, statements, controls - in
/// their order, and which of them is to fail. One at a time, since controls and services have no other way to it.
class Guasti {
public:
    Guasti();
    Guasti(const Guasti&) = delete;
    Guasti& operator=(const Guasti&) = delete;
    ~Guasti();

    /// The recorder that exists; nothing when there is none.
    static Guasti* corrente();

    /// Notes a call, and throws when it is the one that is to fail.
    void chiamata(const std::string& nome);
    /// Starts anew; the n-th call from here on, counted from 0, fails once.
    void registra(std::optional<std::size_t> guasto);
    void ferma() { registrando_ = false; }

    const std::vector<std::string>& traccia() const { return traccia_; }
    /// For each call the one during which it was made, since that raised an event; none for the others.
    const std::vector<std::optional<std::size_t>>& madri() const { return madri_; }
    /// A form that is being made asks for nothing yet.
    void costruisce(bool inCostruzione) { inCostruzione_ = inCostruzione; }
    /// Whether the call that was to fail was reached.
    bool colpito() const { return guasto_ && traccia_.size() > *guasto_; }

    /// A stretch in which calls are the host's own (a control that calls itself, a user's hand), or, with true, again
    /// the component's (a listener).
    class Tratto {
    public:
        explicit Tratto(bool delComponente);
        Tratto(const Tratto&) = delete;
        Tratto& operator=(const Tratto&) = delete;
        ~Tratto();

    private:
        bool prima_ = false;
        std::optional<std::size_t> madre_;
    };

private:
    std::vector<std::string> traccia_;
    std::vector<std::optional<std::size_t>> madri_;
    std::optional<std::size_t> madre_; ///< the control's call that runs
    bool inCostruzione_ = false;
    std::optional<std::size_t> guasto_;
    bool registrando_ = false;
    bool delComponente_ = false;
};

/// A program whose controls, services and connection tell the recorder of every call.
class ProgrammaConGuasti : public Programma {
public:
    ProgrammaConGuasti();

    /// The answer to every error display; "again" is given once, and an error that comes again left.
    void rispondi(int risposta);
};

} // namespace prove
