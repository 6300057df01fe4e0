#include "prefs/ComposePage.h"

#include "core/Literals.h"
#include "prefs/PageControls.h"

namespace varlo {

ComposePage::ComposePage() : PreferencesPage(Page::Compose, u"Compose"_s, u"Compose window settings"_s) {
    auto *chkSignatureOn = NewCheckBox("chkSignatureOn", u"&Add signature when composing messages"_s,
                                       u"Check this box to automatically add your signature to e-mails"_s);
    auto *txtSignature = NewTextBox("txtSignature");
    auto *signature = NewLayout<QVBoxLayout>(AddGroup(Group::Signature, u"Signature"_s));
    signature->addWidget(chkSignatureOn);
    signature->addWidget(NewLabel(u"Signature &text:"_s, txtSignature));
    signature->addWidget(txtSignature, 1);
    Tie(chkSignatureOn, &Preferences::SignatureAutoAdd);
    Tie(txtSignature, &Preferences::SignatureText);
}

} // namespace varlo
