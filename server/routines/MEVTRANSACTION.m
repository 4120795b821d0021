MEVTRANSACTION ; Runs a call that changes data: in one transaction, once, with an entry in the audit (MEVAUDIT)
 ; Such a call sets reply, not reply(1), reply(2) ...
 ;
 ; ^MEVDONE(session name)=day of the last change ^ number of replies kept
 ; ^MEVDONE(session name,request)=entry in the audit ^ reply
 ;
ONCE(number,name,entry) ; Runs an entry of the table of calls; a repeated request number gets the stored reply
 ; Sets reply or failure. filed is true if the change was made, even if failure is set.
 NEW asked,audit,refusals,touched,unseen
 SET asked=param ; a call may normalise its parameter
 IF $DATA(^MEVDONE(token,number)) DO RECALL QUIT
 IF '$$JOURNALED SET failure="The server cannot save: its disk is full." QUIT
 TSTART ():SERIAL
 KILL reply,signals,touched
 SET failure="",reply="",param=asked,refusals=0
 ; Checks again: another process of this session, still running after the client reconnected, may have filed it since.
 IF $DATA(^MEVDONE(token,number)) DO RECALL TCOMMIT  QUIT
 SET audit=$$BEGIN^MEVAUDIT,unseen=$$REFUSED^MEVCONFLICTS
 IF unseen'="" SET reply="-1^"_unseen
 IF unseen="" DO @entry ; from the table of calls, never from a client
 DO REMEMBER
 TCOMMIT
 SET filed=reply'<0 ; from here on an error does not undo the change
 DO SIGNAL^MEVEVENTS
 IF filed SET row=0
 ELSE  DO SLOW^MEVLIMITS(refusals)
 IF audit#500=0 ZSYSTEM $ZTRNLNM("mev_tidy") ; removes old journals
 IF filed,'$$JOURNALED SET failure="The change was made, but may be lost: the server's disk is full."
 QUIT
 ;
RECALL ; Sets the stored reply; fails if the number belongs to a call of another user, or to a different call
 NEW remembered
 SET remembered=^MEVDONE(token,number),audit=$PIECE(remembered,"^")
 IF $PIECE(^MEVAUD(audit),"^",2,3)'=(user_"^"_name)!'$$ASKED^MEVAUDIT(audit,asked) DO  QUIT
 . SET failure="Request "_number_" was another call."
 SET reply=$PIECE(remembered,"^",2,$LENGTH(remembered,"^"))
 QUIT
 ;
REMEMBER ; Files the entry in the audit, and the reply; keeps the last 50 replies of a session
 NEW kept
 DO CHANGE^MEVAUDIT(name)
 SET kept=$PIECE($GET(^MEVDONE(token)),"^",2)+1
 SET ^MEVDONE(token,number)=audit_"^"_reply
 IF kept>50 KILL ^MEVDONE(token,$ORDER(^MEVDONE(token,""))) SET kept=50
 SET ^MEVDONE(token)=+$HOROLOG_"^"_kept
 QUIT
 ;
FORGET ; Removes the replies of sessions whose last change is more than two days old
 NEW name
 SET name=""
 FOR  SET name=$ORDER(^MEVDONE(name)) QUIT:name=""  IF name'=token,$GET(^MEVDONE(name))<($HOROLOG-2) KILL ^MEVDONE(name)
 DO FORGET^MEVCONFLICTS
 QUIT
 ;
JOURNALED() ; True if saves are journaled
 ; The engine turns journaling off on a full disk; this turns it on again once there is room.
 NEW ignored
 IF $VIEW("JNLACTIVE","DEFAULT")=2 QUIT 1
 ZSYSTEM $ZTRNLNM("mev_journal_on") ; a fixed command of the start script
 SET ignored=$DATA(^MEVAUD)
 QUIT $VIEW("JNLACTIVE","DEFAULT")=2
