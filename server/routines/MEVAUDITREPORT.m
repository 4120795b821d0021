MEVAUDITREPORT ; phserver --audit: prints the audit and checks it for tampering. MEVAUDIT describes its nodes.
 ; ^MEVAUX=last indexed entry    ^MEVAUX("PATIENT",patient,entry)=""
 ; ^MEVAUX("RECORD",global,record,entry)=""    ^MEVAUX("SIGNON",session,entry)=""
 ;
PRINT ; Entry point: prints the entries selected by mev_patient, mev_user_name, mev_since, mev_kind with mev_record
 NEW count,entry,index,patient,record,root,since,user
 SET $ETRAP="WRITE ""The server failed: "",$ZSTATUS,! ZHALT 1"
 USE $PRINCIPAL:(WIDTH=1048576:NOWRAP:EXCEPTION="HALT")
 DO INDEX
 SET patient=$ZTRNLNM("mev_patient"),user=$ZTRNLNM("mev_user_name")
 SET since=$ZTRNLNM("mev_since"),record=$ZTRNLNM("mev_record")
 SET root=$SELECT(record="":"",1:"MEV"_$ZTRNLNM("mev_kind")),(count,entry)=0,index="^MEVAUD"
 IF patient'="" SET index="^MEVAUX(""PATIENT"",patient)"
 IF record'="" SET index="^MEVAUX(""RECORD"",root,record)"
 FOR  SET entry=$ORDER(@index@(entry)) QUIT:'entry  IF $$ASKED(entry) DO SHOW(entry) SET count=count+1
 IF 'count WRITE "No such entry.",!
 HALT
 ;
INDEX ; Indexes the new entries
 NEW entry,ien,last,node,root
 SET last=+$GET(^MEVAUD)
 FOR entry=$GET(^MEVAUX)+1:1:last DO
 . SET node=$GET(^MEVAUD(entry)),root=$PIECE(node,"^",9),ien=$PIECE(node,"^",10)
 . ; Entries without a hash name their record only if it existed before.
 . IF $$OLD(node) DO
 . . SET root=$PIECE($ORDER(^MEVAUD(entry,"BEFORE","")),"^",2)
 . . SET:root'="" ien=$ORDER(^MEVAUD(entry,"BEFORE","^"_root,""))
 . SET:root'="" ^MEVAUX("RECORD",root,ien,entry)=""
 . SET:$$PATIENT(entry,node)'="" ^MEVAUX("PATIENT",$$PATIENT(entry,node),entry)=""
 . IF $PIECE(node,"^",3,4)="MEVHOST SIGNON^1" SET ^MEVAUX("SIGNON",$PIECE(node,"^",6),entry)=""
 SET:last>$GET(^MEVAUX) ^MEVAUX=last
 QUIT
 ;
PATIENT(entry,node) ; An entry's patient, empty if it has none
 NEW ien,root
 IF '$$OLD(node) QUIT $PIECE(node,"^",8)
 SET root=$ORDER(^MEVAUD(entry,"BEFORE",""))
 IF root="" QUIT ""
 SET ien=$ORDER(^MEVAUD(entry,"BEFORE",root,""))
 QUIT $PIECE($GET(^MEVAUD(entry,"BEFORE",root,ien,0)),"^")
 ;
ASKED(entry) ; True if the entry is selected
 NEW node
 SET node=$GET(^MEVAUD(entry))
 IF user'="",$$PERSON^MEVAUDIT(node)'=user QUIT 0
 IF since]]$$UTC(node) QUIT 0
 QUIT $SELECT(patient="":1,1:$$PATIENT(entry,node)=patient)
 ;
UTC(node) ; When an entry was made, in UTC; in server time if it has no hash
 QUIT $SELECT($$OLD(node):$$LOCAL^MEVAUDIT(node),1:$PIECE(node,"^"))
 ;
OLD(node) ; True for an entry of an older server, without a hash
 QUIT $PIECE(node,"^")[","
 ;
SHOW(entry) ; Prints an entry: one line, and its details in further lines
 NEW call,node,session,sign
 SET node=^MEVAUD(entry),call=$PIECE(node,"^",3),session=$PIECE(node,"^",6)
 WRITE "Entry ",entry,"  ",$$UTC(node),$SELECT($$OLD(node):" (server's time)",1:""),"  ",$$PERSON^MEVAUDIT(node)
 IF $PIECE(node,"^",2) WRITE " (user ",$PIECE(node,"^",2),")"
 WRITE "  ",call,": ",$$VERB(entry,node)
 IF $PIECE(node,"^",10)'="" WRITE ", record ",$EXTRACT($PIECE(node,"^",9),4,9)," ",$PIECE(node,"^",10)
 IF $PIECE(node,"^",8)'="" WRITE ", patient ",$PIECE(node,"^",8)
 IF session WRITE ", session ",session
 WRITE !
 IF call="MEVHOST SIGNON" DO ORIGIN(entry) DO TEXT(entry,"WHY","refused") QUIT
 ; The origin is that of the session's sign-on.
 IF session SET sign=$ORDER(^MEVAUX("SIGNON",session,entry),-1) IF sign DO ORIGIN(sign)
 DO TEXT(entry,"CALL","asked"),TEXT(entry,"CUT","cut; bytes and digest of the whole")
 DO TEXT(entry,"WHY",$SELECT($PIECE(node,"^",4)<0:"refused",1:"note"))
 DO NODES(entry,"BEFORE","before"),NODES(entry,"AFTER","after")
 QUIT
 ;
VERB(entry,node) ; The entry's action
 NEW after
 SET after=$DATA(^MEVAUD(entry,"AFTER"))
 IF $PIECE(node,"^",4)<0 QUIT "refused"
 IF $DATA(^MEVAUD(entry,"BEFORE")) QUIT $SELECT(after:"changed",$LENGTH(node,"^")<11:"changed or deleted",1:"deleted")
 IF after QUIT "made"
 QUIT $SELECT($PIECE(node,"^",3)?1"LOOK".E:"looked",1:"done")
 ;
ORIGIN(entry) ; Prints from where a session signed on
 NEW text
 SET text=$GET(^MEVAUD(entry,"CALL"))
 WRITE "    session's name has the digest ",$PIECE(text,"^"),"; "
 WRITE $SELECT($PIECE(text,"^",2)="":"on this machine",1:"certificate "_$PIECE(text,"^",2))
 IF $PIECE(text,"^",5)'="" WRITE " (number ",$PIECE(text,"^",5),")"
 IF $PIECE(text,"^",3)'="" WRITE ", from ",$PIECE(text,"^",3)
 WRITE !
 QUIT
 ;
TEXT(entry,part,what) ; Prints a text of an entry, if it exists
 IF $DATA(^MEVAUD(entry,part))#10 WRITE "    ",what,": ",$$PRINTABLE^MEVTEXT(^MEVAUD(entry,part),""),!
 QUIT
 ;
NODES(entry,part,what) ; Prints the nodes of a record before or after the change
 NEW begin,name
 SET name="^MEVAUD("_entry_","""_part_""")",begin=$EXTRACT(name,1,$LENGTH(name)-1)_","
 FOR  SET name=$QUERY(@name) QUIT:$EXTRACT(name,1,$LENGTH(begin))'=begin  DO
 . WRITE "    ",what," ",$EXTRACT(name,$LENGTH(begin)+1,$LENGTH(name)-1),": ",$$PRINTABLE^MEVTEXT(@name,""),!
 QUIT
 ;
VERIFY ; Entry point: checks each entry; exits with 1 if one was changed, is missing, or was inserted
 ; mev_kept is an entry's number and hash from an earlier run; it reveals a chain that was recomputed since.
 NEW began,entry,expected,faults,former,head,kept,last,none
 SET $ETRAP="WRITE ""The server failed: "",$ZSTATUS,! ZHALT 1"
 ; In this order, because a session may file an entry and move the head meanwhile.
 SET last=$ORDER(^MEVAUD(""),-1),head=$GET(^MEVAUD),kept=$ZTRNLNM("mev_kept")
 SET (began,faults)=0,expected=1,(entry,former)=""
 IF 'head,$DATA(^MEVAUX)!$DATA(^MEVCHG)!$DATA(^MEVDONE) DO FAULT("All entries are missing.")
 FOR  SET entry=$ORDER(^MEVAUD(entry)) QUIT:entry=""  QUIT:entry?1N.N&(entry>head)&(entry'=last)  DO ONE(entry)
 IF +head'<expected DO FAULT($$RANGE(expected,+head)_" missing at the end.")
 IF began,$PIECE(head,"^",2)'=former DO FAULT("The head does not fit the last entry.")
 IF 'began,head DO FAULT("The audit has no chain yet: it begins when this version's first session has signed on.")
 IF kept'="",$PIECE($GET(^MEVAUD(+kept)),"^",11)'=$PIECE(kept," ",2) DO
 . DO FAULT("Entry "_(+kept)_" does not have the hash that was kept.")
 SET none="none was changed, is missing, or was inserted."
 WRITE $FNUMBER(+head,",")," entries, "
 WRITE $SELECT(faults=1:"1 fault.",faults:$FNUMBER(faults,",")_" faults.",1:none),!
 WRITE "Keep this line where nobody who can write the data can change it, for a later --verify:",!
 WRITE +head," ",$PIECE(head,"^",2),!
 IF faults ZHALT 1
 HALT
 ;
ONE(entry) ; Checks an entry: its number, its hash over the entry before, and its nodes in the indexes
 NEW ien,name,node,nodes,own,patient,root
 IF entry'?1N.N!(entry>head)!(entry<expected) DO FAULT("Entry "_entry_" was inserted.") QUIT
 IF entry>expected DO FAULT($$RANGE(expected,entry-1)_" missing.")
 SET expected=entry+1,node=$GET(^MEVAUD(entry)),own=$PIECE(node,"^",11)
 IF 'began,$LENGTH(node,"^")<11 SET former=$$LINK^MEVAUDIT(former,entry,node) QUIT
 SET began=1
 IF own'=$$LINK^MEVAUDIT(former,entry,$PIECE(node,"^",1,10),.nodes)!($LENGTH(node,"^")>11) DO
 . DO FAULT("Entry "_entry_" or the one before it was changed.")
 SET former=own,name="^MEVAUD("_entry_")"
 FOR  SET name=$QUERY(@name) QUIT:$PIECE(name,"^MEVAUD("_entry_",")'=""!(name="")  SET nodes=nodes-1
 IF nodes DO FAULT("Entry "_entry_" has an unexpected node.")
 IF entry>$GET(^MEVAUX) QUIT
 SET patient=$PIECE(node,"^",8),root=$PIECE(node,"^",9),ien=$PIECE(node,"^",10)
 IF patient'="",'$DATA(^MEVAUX("PATIENT",patient,entry)) DO
 . DO FAULT("Entry "_entry_" is missing in the index of patients.")
 IF root'="",'$DATA(^MEVAUX("RECORD",root,ien,entry)) DO
 . DO FAULT("Entry "_entry_" is missing in the index of records.")
 QUIT
 ;
RANGE(first,last) ; The subject and verb of a fault
 QUIT $SELECT(first=last:"Entry "_first_" is",1:"Entries "_first_" to "_last_" are")
 ;
FAULT(text) ; Prints and counts a fault
 WRITE text,!
 SET faults=faults+1
 QUIT
