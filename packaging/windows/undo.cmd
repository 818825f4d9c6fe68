@echo off
rem Puts everything back as it was before set-up.cmd. With /q it does not wait for a key at the end.
rem Where .js files are another program's, the engine has to be named.
set engine=
reg query HKCR\.js /ve 2>nul | find "JSFile" >nul
if errorlevel 1 set engine=//E:JScript
cscript //nologo %engine% "%~dp0set-up.js" undo
set status=%errorlevel%
if not "%1"=="/q" pause
exit /b %status%
