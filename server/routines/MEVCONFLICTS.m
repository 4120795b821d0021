MEVCONFLICTS ; Detects conflicts: a save may change a record only if its session has read the current version
 ; A host names the purpose of a request: LIST, a list that the user sees; EDIT, a form that may save the record. With a
 ; change it sends CHECK and the numbers of the EDIT requests whose replies a form has received; without CHECK, nothing
 ; is checked. The marks survive the process, so that a session can continue after a lost connection.
 ;
 ; ^MEVCHG(root,patient)=number of the last change        ^MEVCHG(root,patient,record)=the same, of one record
 ; ^MEVSEEN(session name)=day of the last mark            ^MEVSEEN(session name,"LIST",root)=patient ^ change
 ; ^MEVSEEN(session name,"EDIT",root,record)=change ^ number of the request ^ another session's change that came after
 ; The comment of the registry, which its form also reads, has its own mark, with the root "^MEVREG NOTE".
 ; The number of a change is the number of its entry in the audit.
 ;
READ(number,entry) ; Runs a reading call of the table of calls and marks what it read
 ; Repeats the call if the record changed meanwhile, so that the mark belongs to the reply.
 NEW before,patient,record,root,tries
 DO SUBJECT
 FOR tries=1:1:5 DO  QUIT:before=$$LAST(root,patient,record)
 . SET before=$$LAST(root,patient,record)
 . KILL reply
 . SET reply=""
 . DO @entry
 IF patient'="",reply'?1"-1^".E DO NOTE
 QUIT
 ;
NOTE ; Sets the mark. If that fails (full disk), the reply is sent anyway, but a save will be refused.
 NEW $ETRAP,level,part
 SET level=$ZLEVEL,$ETRAP="ZGOTO level:UNMARKED^MEVCONFLICTS"
 IF purpose="LIST" DO
 . SET:$GET(^MEVSEEN(token,"LIST",root))'=(patient_"^"_before) ^MEVSEEN(token,"LIST",root)=patient_"^"_before
 . DO TODAY
 IF purpose="EDIT",record'="" DO
 . SET part=root_$SELECT(name["NOTE":" NOTE",1:""),^MEVSEEN(token,"EDIT",part,record)=before_"^"_number
 . DO TODAY
 QUIT
 ;
SUBJECT ; Sets root, patient, and record (empty for a list) by the call; an empty patient if there is no such record
 SET root=$$ROOT,patient=$PIECE(param,"^"),record=$PIECE(param,"^",2)
 IF $$IS1(root) SET record=$SELECT(purpose="LIST":"",1:patient)
 IF record'="",record'?1N.11N SET (patient,record)="" QUIT
 ; The patient comes from the record, because a client could request marks for countless missing records.
 IF record'="",'$$IS1(root) SET patient=$PIECE($GET(@root@(record,0)),"^")
 IF patient'?1N.8N SET (patient,record)=""
 QUIT
 ;
ROOT() ; The global of the records that the call is about
 QUIT $SELECT(name["REG"!(name["NOTE"):"^MEVREG",1:"^"_$PIECE(name," "))
 ;
IS1(root) ; True if a patient has one record of this kind, whose number is the patient's
 QUIT root="^MEVREP"!(root="^MEVBMSR")!(root="^MEVREG")
 ;
LAST(root,patient,record) ; The last change of the record or, without one, of all of the patient's records; 0 if none
 IF patient="" QUIT 0
 IF record="" QUIT +$GET(^MEVCHG(root,patient))
 QUIT +$GET(^MEVCHG(root,patient,record))
 ;
UNMARKED ; Error trap of NOTE
 SET $ETRAP="GOTO BROKEN^MEVSESSION",$ECODE=""
 QUIT
 ;
TODAY ; Notes that a mark was set today
 SET:$GET(^MEVSEEN(token))'=+$HOROLOG ^MEVSEEN(token)=+$HOROLOG
 QUIT
 ;
CHANGED(root,record,patient) ; Notes a change, which makes the marks of other sessions outdated
 ; This session's mark stays current if it was, because it made the change itself.
 NEW before,part
 IF patient'?1N.8N QUIT  ; not a patient's record
 SET before=$$LAST(root,patient,record),^MEVCHG(root,patient)=audit,^MEVCHG(root,patient,record)=audit
 QUIT:$GET(token)=""
 FOR part=root,root_" NOTE" IF $DATA(^MEVSEEN(token,"EDIT",part,record)) DO
 . IF $PIECE(^MEVSEEN(token,"EDIT",part,record),"^")=before DO  QUIT
 . . SET $PIECE(^MEVSEEN(token,"EDIT",part,record),"^")=audit
 . ; This change was not checked (the registry's status alone), so the user has still not seen the former one.
 . IF $PIECE(^MEVSEEN(token,"EDIT",part,record),"^",3)="" SET $PIECE(^MEVSEEN(token,"EDIT",part,record),"^",3)=before
 QUIT
 ;
REFUSED() ; Why a change is a conflict, as a sentence; empty if the session has read the current version
 NEW deletes,known,last,mark,patient,record,root,why
 IF $PIECE(purpose," ")'="CHECK" QUIT ""
 SET root=$$ROOT,record=$PIECE(param,"^"),deletes=$PIECE(name," ",2)="DEL"
 ; A change of the registry's status alone is never a conflict.
 IF root="^MEVREG",$LENGTH(param,"^")<3 QUIT ""
 IF record'?1N.11N QUIT ""
 SET patient=$SELECT($$IS1(root):record,1:$PIECE($GET(@root@(record,0)),"^"))
 IF patient="" QUIT ""
 SET last=$$LAST(root,patient,record),mark=$GET(^MEVSEEN(token,"EDIT",root,record)),known=$PIECE(mark,"^")
 IF deletes QUIT $SELECT(last>$$LISTED(known):$$CHANGE(last)_": look at it before you delete it.",1:"")
 SET why=$$UNREAD
 IF why="",root="^MEVREG" SET mark=$GET(^MEVSEEN(token,"EDIT",root_" NOTE",record)),known=$PIECE(mark,"^"),why=$$UNREAD
 QUIT why
 ;
UNREAD() ; A sentence if, according to the mark, the form has not read the current version; else empty
 NEW unseen
 ; A missing record cannot be overwritten.
 IF mark="",'$DATA(@root@(record,0)) QUIT ""
 SET unseen=$SELECT($PIECE(mark,"^",3):$PIECE(mark,"^",3),1:last)
 IF last>known,mark'="" QUIT $$CHANGE(unseen)_". Open it again to see the change."
 IF mark'=""," "_$PIECE(purpose," ",2,999)_" "[(" "_$PIECE(mark,"^",2)_" ") QUIT ""
 QUIT "This record could not be read into the form, so it cannot be saved over. Open it again."
 ;
LISTED(known) ; The newest change that the session has read, in a form or a list; if it has read none, the last one
 NEW listed
 SET listed=$GET(^MEVSEEN(token,"LIST",root))
 IF $PIECE(listed,"^")'=patient QUIT $SELECT(mark="":last,1:known)
 QUIT $SELECT($PIECE(listed,"^",2)>known:$PIECE(listed,"^",2),1:known)
 ;
CHANGE(audit) ; A clause that names the user and the time of a change
 NEW date,when,who
 SET who=$$WHO^MEVAUDIT(audit),date=$TRANSLATE($PIECE(who,"^",3),"-")-17000000,when=" at "_$PIECE(who,"^",2)
 IF date'=$$TODAY^MEVDATE SET when=" on "_$$SLASHED^MEVDATE(date)_when
 QUIT "This record was "_$SELECT($DATA(@root@(record,0)):"changed",1:"deleted")_" by "_$PIECE(who,"^")_when
 ;
FORGET ; Removes the marks of sessions that have read nothing for a month
 NEW name
 SET name=""
 FOR  SET name=$ORDER(^MEVSEEN(name)) QUIT:name=""  IF name'=token DO
 . IF $GET(^MEVSEEN(name))<($HOROLOG-31) KILL ^MEVSEEN(name)
 QUIT
