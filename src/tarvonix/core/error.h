// SPDX-License-Identifier: MIT
#ifndef TARVONIX_ERROR_H
#define TARVONIX_ERROR_H

#include <tarvonix/tarvonixmodel_export.h>

#include <QString>

#include <stdexcept>

namespace tarvonix {

/*!
    The one failure type of the library.

    Every failure carries a number and a description. The numbers are the
    classic run-time error numbers that host applications of map controls
    already test for; the descriptions are the texts shown after an
    operation's label ("MapaX.add->" + description).
*/
class TARVONIX_MODEL_EXPORT Error : public std::runtime_error
{
public:
    enum Code {
        InvalidArgument = 5,       //!< a lookup by an unknown key, an argument out of its domain
        Overflow = 6,              //!< a 16-bit result that does not fit
        DivisionByZero = 11,       //!< a computation whose divisor came out as zero
        SubscriptOutOfRange = 9,   //!< an index outside a collection or the leg's grid
        TypeMismatch = 13,         //!< a value that is not of the kind asked for
        ObjectNotSet = 91,         //!< a none reference where a member is read
        MemberNotSupported = 438,  //!< a late-bound call of a member the object lacks
        DuplicateKey = 457,        //!< a key already present in a keyed collection
        ControlNotFound = 730,     //!< a child control name that does not exist
    };

    explicit Error(Code code);
    Error(Code code, const QString &description);

    Code code() const noexcept { return m_code; }
    QString description() const;

    //! The standard description of \a code.
    static QString standardDescription(Code code);

private:
    Code m_code;
};

} // namespace tarvonix

#endif
