#include "smtp/Curl.h"

#include "core/Literals.h"

#include <QLibrary>

namespace OSSMTP {

#ifdef Q_OS_WIN

#define VARLO_CURL_LIBRARY "" // linked
#define VARLO_FIND(name) name = curl_##name

#else

#define VARLO_FIND(name) Find(name, "curl_" #name, file, Problem)

namespace {

template<typename Function>
void Find(Function &function, const char *name, QLibrary &file, QString &problem) {
    function = reinterpret_cast<Function>(file.resolve(name));
    if (!function)
        problem = file.fileName() + u" has no "_s + QString::fromLatin1(name);
}

} // namespace

#endif

CurlFunctions::CurlFunctions(const QString &library) {
    QLibrary file(library);
    file.setLoadHints(QLibrary::PreventUnloadHint);
    if (!library.isEmpty() && !file.load()) {
        Problem = file.errorString();
        return;
    }
    VARLO_FIND(global_init);
    VARLO_FIND(easy_init);
    VARLO_FIND(easy_setopt);
    VARLO_FIND(easy_getinfo);
    VARLO_FIND(easy_send);
    VARLO_FIND(easy_recv);
    VARLO_FIND(easy_strerror);
    VARLO_FIND(easy_cleanup);
    VARLO_FIND(multi_init);
    VARLO_FIND(multi_setopt);
    VARLO_FIND(multi_add_handle);
    VARLO_FIND(multi_remove_handle);
    VARLO_FIND(multi_socket_action);
    VARLO_FIND(multi_info_read);
    VARLO_FIND(multi_cleanup);
    VARLO_FIND(url);
    VARLO_FIND(url_set);
    VARLO_FIND(url_get);
    VARLO_FIND(url_cleanup);
    VARLO_FIND(free);
    if (Problem.isEmpty())
        global_init(CURL_GLOBAL_DEFAULT);
}

const CurlFunctions &Curl() {
    static const CurlFunctions functions(QStringLiteral(VARLO_CURL_LIBRARY));
    return functions;
}

} // namespace OSSMTP
