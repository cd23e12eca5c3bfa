; SPDX-FileCopyrightText: the Tarvell authors
; SPDX-License-Identifier: GPL-3.0-or-later
;
; The installer. scripts/windows gives VERSION, PROGRAM (the folder with what is installed), REMOVAL
; (the commands that remove exactly that), LICENSE, ICON and OUTPUT. Without a window: /S, and /AllUsers or /CurrentUser.
Target amd64-unicode
ManifestDPIAware true
SetCompressor /SOLID lzma

!define NAME "Tarvell"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_USE_PROGRAMFILES64
!define MULTIUSER_INSTALLMODE_INSTDIR "${NAME}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "InstallLocation"
!include MultiUser.nsh
!include MUI2.nsh
!include FileFunc.nsh

Name "${NAME}"
OutFile "${OUTPUT}"
BrandingText "${NAME} ${VERSION}"
VIProductVersion "${VERSION}.0.0"
VIAddVersionKey ProductName "${NAME}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Installs ${NAME}"
VIAddVersionKey CompanyName "the Tarvell authors"
VIAddVersionKey LegalCopyright "the Tarvell authors, GNU General Public License 3 or later"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!insertmacro MUI_PAGE_LICENSE "${LICENSE}"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
; It does not start the program, which would get the rights of the installer.
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A running program cannot be replaced or removed.
!macro StopWhileRunning program verb
  IfFileExists "$INSTDIR\${program}.exe" 0 free_${verb}_${program}
  ClearErrors
  FileOpen $0 "$INSTDIR\${program}.exe" a
  IfErrors 0 close_${verb}_${program}
  MessageBox MB_OK|MB_ICONSTOP "${program}.exe is running, or you have no permission to change $INSTDIR. Close it, then try again." /SD IDOK
  SetErrorLevel 2
  Abort
  close_${verb}_${program}:
  FileClose $0
  free_${verb}_${program}:
!macroend

; For all users, rights are needed. Windows' own number for that is the result.
!macro StopWithoutRights
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 != "Admin"
    MessageBox MB_OK|MB_ICONSTOP "Only an administrator can install or remove ${NAME} for all users." /SD IDOK
    SetErrorLevel 740
    Quit
  ${EndIf}
!macroend

Function .onInit
  SetRegView 64
  ${GetParameters} $1
  ClearErrors
  ${GetOptions} $1 "/AllUsers" $2
  ${IfNot} ${Errors}
    !insertmacro StopWithoutRights
  ${EndIf}
  !insertmacro MULTIUSER_INIT
FunctionEnd

; There may be two: one for all users and one for this user. What is removed is the one that this
; uninstaller is in.
Function un.onInit
  SetRegView 64
  StrCpy $3 $INSTDIR
  ReadRegStr $4 HKLM "${UNINSTALL_KEY}" InstallLocation
  ${If} $3 == $4
    !insertmacro StopWithoutRights
  ${EndIf}
  !insertmacro MULTIUSER_UNINIT
  ${If} $3 == $4
    Call un.MultiUser.InstallMode.AllUsers
  ${Else}
    Call un.MultiUser.InstallMode.CurrentUser
  ${EndIf}
  StrCpy $INSTDIR $3
FunctionEnd

Section "Install"
  !insertmacro StopWhileRunning tarvell install
  !insertmacro StopWhileRunning tarvell-cli install
  ; Nothing of an earlier version stays: its own uninstaller knows what it has installed. With _?= it
  ; runs where it is, so that this waits for its end.
  IfFileExists "$INSTDIR\uninstall.exe" 0 +2
    ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
  ClearErrors
  SetOutPath "$INSTDIR"
  File /r "${PROGRAM}\*"
  IfErrors 0 written
    ; Nothing says that the program is installed. The result is 2.
    MessageBox MB_OK|MB_ICONSTOP "Not all files could be written to $INSTDIR. Check the disk and the \
folder, then install again." /SD IDOK
    Abort
written:
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateDirectory "$SMPROGRAMS\${NAME}"
  CreateShortcut "$SMPROGRAMS\${NAME}\${NAME}.lnk" "$INSTDIR\tarvell.exe"
  CreateShortcut "$SMPROGRAMS\${NAME}\${NAME} handbook.lnk" "$INSTDIR\handbook\handbook.html"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayName "${NAME}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayVersion "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" DisplayIcon "$INSTDIR\tarvell.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" Publisher "the Tarvell authors"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" InstallLocation "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" UninstallString '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" QuietUninstallString '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoModify 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" NoRepair 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" EstimatedSize $0
SectionEnd

; The data, the settings and the history are not in the program's folder, and stay.
Section "Uninstall"
  !insertmacro StopWhileRunning tarvell remove
  !insertmacro StopWhileRunning tarvell-cli remove
  !include "${REMOVAL}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\${NAME}\${NAME}.lnk"
  Delete "$SMPROGRAMS\${NAME}\${NAME} handbook.lnk"
  RMDir "$SMPROGRAMS\${NAME}"
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
SectionEnd
