MEVCONFLICTS ; Nobody's change is overwritten unseen: a save changes only what its session has read as it stands now
 ; A host tells with a request what its reply is for: LIST, a list that the user sees; EDIT, a form that may save the record. With a
 ; change it sends CHECK and the numbers of the EDIT requests whose replies have reached a form. A host that says none of this is let pass.
 ; The marks outlive the process: a session that comes back after a lost connection has read what it had read.
 ;
 ; ^MEVCHG(root,patient)=number of the last change        ^MEVCHG(root,patient,record)=the same, of one record
 ; ^MEVSEEN(session name)=day of the last mark            ^MEVSEEN(session name,"LIST",root)=patient ^ change
 ; ^MEVSEEN(session name,"EDIT",root,record)=change ^ number of the request ^ another session's change that came after
 ; The registry's form also reads the comment, which has a mark of its own: its root is "^MEVREG NOTE".
 ; The number of a change is that of its entry in the audit.
 ;
READ(number,entry) ; Carries out a call that reads, from the table of calls, and marks what was read
 ; Read again when somebody changed it meanwhile: the mark must be neither older nor newer than the reply.
 NEW before,patient,record,root,tries
 DO SUBJECT
 FOR tries=1:1:5 SET before=$$LAST(root,patient,record) KILL reply SET reply="" DO @entry QUIT:before=$$LAST(root,patient,record)
 IF patient'="",reply'?1"-1^".E DO NOTE
 QUIT
 ;
NOTE ; Marks it. What cannot be marked (a full disk) is shown all the same; a save will be refused.
 NEW $ETRAP,level
 SET level=$ZLEVEL,$ETRAP="ZGOTO level:UNMARKED^MEVCONFLICTS"
 IF purpose="LIST" SET:$GET(^MEVSEEN(token,"LIST",root))'=(patient_"^"_before) ^MEVSEEN(token,"LIST",root)=patient_"^"_before DO TODAY
 IF purpose="EDIT",record'="" SET ^MEVSEEN(token,"EDIT",root_$SELECT(name["NOTE":" NOTE",1:""),record)=before_"^"_number DO TODAY
 QUIT
 ;
SUBJECT ; Sets root, patient and record, of a list no record, by the call's name and parameter; an empty patient for what is not there
 SET root=$$ROOT,patient=$PIECE(param,"^"),record=$PIECE(param,"^",2)
 IF $$IS1(root) SET record=$SELECT(purpose="LIST":"",1:patient)
 IF record'="",record'?1N.11N SET (patient,record)="" QUIT
 ; By the record, not by the request: marks of records that are not there could be made without end.
 IF record'="",'$$IS1(root) SET patient=$PIECE($GET(@root@(record,0)),"^")
 IF patient'?1N.8N SET (patient,record)=""
 QUIT
 ;
ROOT() ; The global of the records that the call is about
 QUIT $SELECT(name["REG"!(name["NOTE"):"^MEVREG",1:"^"_$PIECE(name," "))
 ;
IS1(root) ; Of these a patient has one record, whose number is the patient's
 QUIT root="^MEVREP"!(root="^MEVBMSR")!(root="^MEVREG")
 ;
LAST(root,patient,record) ; The last change of a record, without one of all that the patient has of the kind; 0 before the first
 IF patient="" QUIT 0
 IF record="" QUIT +$GET(^MEVCHG(root,patient))
 QUIT +$GET(^MEVCHG(root,patient,record))
 ;
UNMARKED ; After an error in NOTE
 SET $ETRAP="GOTO BROKEN^MEVSESSION",$ECODE=""
 QUIT
 ;
TODAY ; A mark was made today
 SET:$GET(^MEVSEEN(token))'=+$HOROLOG ^MEVSEEN(token)=+$HOROLOG
 QUIT
 ;
CHANGED(root,record,patient) ; A change is being made: what other sessions have read of the record is out of date now.
 ; This session still knows the record if it did before, since the change is its own.
 NEW before,part
 IF patient'?1N.8N QUIT  ; no patient's record
 SET before=$$LAST(root,patient,record),^MEVCHG(root,patient)=audit,^MEVCHG(root,patient,record)=audit
 QUIT:$GET(token)=""
 FOR part=root,root_" NOTE" IF $DATA(^MEVSEEN(token,"EDIT",part,record)) DO
 . IF $PIECE(^MEVSEEN(token,"EDIT",part,record),"^")=before SET $PIECE(^MEVSEEN(token,"EDIT",part,record),"^")=audit QUIT
 . ; This change was let pass all the same (the registry's status by itself): the former one is still unseen.
 . IF $PIECE(^MEVSEEN(token,"EDIT",part,record),"^",3)="" SET $PIECE(^MEVSEEN(token,"EDIT",part,record),"^",3)=before
 QUIT
 ;
REFUSED() ; Why a change may not be made: a sentence; empty when its session knows what it changes
 NEW deletes,known,last,mark,patient,record,root,why
 IF $PIECE(purpose," ")'="CHECK" QUIT ""
 SET root=$$ROOT,record=$PIECE(param,"^"),deletes=$PIECE(name," ",2)="DEL"
 ; The registry's status by itself is set whatever it was.
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
UNREAD() ; Why the form does not know the record that it saves, by a mark; empty when it does
 ; What is not there cannot be overwritten.
 IF mark="",'$DATA(@root@(record,0)) QUIT ""
 IF last>known,mark'="" QUIT $$CHANGE($SELECT($PIECE(mark,"^",3):$PIECE(mark,"^",3),1:last))_". Open it again to see the change."
 IF mark'=""," "_$PIECE(purpose," ",2,999)_" "[(" "_$PIECE(mark,"^",2)_" ") QUIT ""
 QUIT "This record could not be read into the form, so it cannot be saved over. Open it again."
 ;
LISTED(known) ; The newest change of the record that the session knows of, by a form or its list; where it has read neither, the last one there is
 NEW listed
 SET listed=$GET(^MEVSEEN(token,"LIST",root))
 IF $PIECE(listed,"^")'=patient QUIT $SELECT(mark="":last,1:known)
 QUIT $SELECT($PIECE(listed,"^",2)>known:$PIECE(listed,"^",2),1:known)
 ;
CHANGE(audit) ; Who made a change, and when
 NEW date,when,who
 SET who=$$WHO^MEVAUDIT(audit),date=$TRANSLATE($PIECE(who,"^",3),"-")-17000000,when=" at "_$PIECE(who,"^",2)
 IF date'=$$TODAY^MEVDATE SET when=" on "_$$SLASHED^MEVDATE(date)_when
 QUIT "This record was "_$SELECT($DATA(@root@(record,0)):"changed",1:"deleted")_" by "_$PIECE(who,"^")_when
 ;
FORGET ; Drops the marks of sessions that have read nothing for a month
 NEW name
 SET name=""
 FOR  SET name=$ORDER(^MEVSEEN(name)) QUIT:name=""  IF name'=token,$GET(^MEVSEEN(name))<($HOROLOG-31) KILL ^MEVSEEN(name)
 QUIT
