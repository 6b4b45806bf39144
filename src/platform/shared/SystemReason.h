#pragma once

#include <cerrno>
#include <string>

namespace platform {

/// What an error number of the operating system means, in the user's language: its own words are those of the
/// machine's settings.
inline std::string systemReason(int number) {
    switch (number) {
    case ENOENT:
        return "il percorso non esiste";
    case EACCES:
    case EPERM:
        return "manca il permesso";
    case EISDIR:
        return "è una cartella";
    case ENOTDIR:
        return "una parte del percorso non è una cartella";
    case EEXIST:
        return "esiste già";
    case ENOSPC:
    case EDQUOT:
        return "non c'è più spazio sul disco";
    case EFBIG:
        return "supera la grandezza permessa";
    case EROFS:
        return "il disco è di sola lettura";
    case EIO:
        return "errore di lettura o scrittura del disco";
    case EMFILE:
    case ENFILE:
        return "troppi file aperti";
    case ENAMETOOLONG:
        return "il nome è troppo lungo";
    case ELOOP:
        return "il collegamento del percorso gira in tondo";
    case EXDEV:
        return "sta su un altro disco";
    case ETXTBSY:
    case EBUSY:
        return "è in uso";
    default:
        return "errore " + std::to_string(number) + " del sistema";
    }
}

} // namespace platform
